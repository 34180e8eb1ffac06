// Which windows are assist tools'.
#include "bridge/tool_forms.h"

#include <gtest/gtest.h>

namespace spellwick::bridge {
namespace {

struct FormRow {
    const char* windowClass;
    const char* title;
    const char* form;  // null for none
};

class ToolForms : public testing::TestWithParam<FormRow> {};

TEST_P(ToolForms, Window_IsKnownByItsForm) {
    const FormRow& row = GetParam();
    const int form = FindToolForm(row.windowClass, row.title);
    if (row.form == nullptr) {
        EXPECT_EQ(form, kNoToolForm);
    } else {
        ASSERT_NE(form, kNoToolForm);
        EXPECT_EQ(kToolForms.at(static_cast<std::size_t>(form)).text, row.form);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ToolForms,
    testing::Values(FormRow{"any", "UOAssist", "UOAssist"},
                    FormRow{"any", "UOAssist 2003.05 - Mira", "UOAssist"},
                    FormRow{"any", "uoassist", nullptr}, FormRow{"any", "My UOAssist", nullptr},
                    FormRow{"UOASSIST-TP-MSG-WND", "UOASSIST-TP-MSG-WND", "UOASSIST-TP-MSG-WND"},
                    FormRow{"any", "UOASSIST-TP-MSG-WND", nullptr},
                    FormRow{"UOASSIST-TP-MSG-WND", "another", nullptr},
                    FormRow{"any", "Razor v1.9.77.0", "Razor v"},
                    FormRow{"any", "Mira Talon (Atlantic) - Razor v1.9", "Razor v"},
                    FormRow{"any", "A - (B) (Atlantic) - Razor v1.9", "Razor v"},
                    FormRow{"any", "How to set up Razor v1.9", nullptr},
                    FormRow{"any", "Razor v", nullptr}, FormRow{"any", "Razor version 2", nullptr},
                    FormRow{"any", "Razor", nullptr},
                    FormRow{"any", "Mira Talon (Atlantic) - Razor Enhanced 0.8.2.245",
                            "Razor Enhanced "},
                    FormRow{"any", "Razor Enhanced 0.8", "Razor Enhanced "},
                    FormRow{"any", "Razor Enhanced Script Editor", nullptr},
                    FormRow{"Ultima Online", "Ultima Online - Mira Talon (Atlantic)", nullptr},
                    FormRow{"any", "", nullptr}));

}  // namespace
}  // namespace spellwick::bridge

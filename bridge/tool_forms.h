// The forms of the windows that assist tools own, by which the bridge knows them. What their
// reports mean is not its concern.
#pragma once

#include <array>
#include <string_view>

namespace spellwick::bridge {

enum class TitleForm {
    kStart,    // the title starts with the text
    kWhole,    // class and title are the text
    kVersion,  // the text and a version, alone or behind "NAME (SHARD) - "
};

struct ToolForm {
    TitleForm form;
    std::string_view text;
};

inline constexpr std::array kToolForms{
    ToolForm{TitleForm::kStart, "UOAssist"},
    ToolForm{TitleForm::kWhole, "UOASSIST-TP-MSG-WND"},
    ToolForm{TitleForm::kVersion, "Razor v"},
    ToolForm{TitleForm::kVersion, "Razor Enhanced "},
};

inline constexpr int kNoToolForm = -1;

constexpr bool HasToolForm(const ToolForm& form, std::string_view windowClass,
                           std::string_view title) {
    constexpr std::string_view kBehindCharacter = ") - ";
    if (form.form == TitleForm::kStart) {
        return title.starts_with(form.text);
    }
    if (form.form == TitleForm::kWhole) {
        return title == form.text && windowClass == form.text;
    }
    const std::size_t at = title.rfind(form.text);
    if (at == std::string_view::npos) {
        return false;
    }
    const std::string_view version = title.substr(at + form.text.size());
    return !version.empty() && version.front() >= '0' && version.front() <= '9' &&
           (at == 0 || title.substr(0, at).ends_with(kBehindCharacter));
}

// The place in the table of the form that a window has, texts in UTF-8; kNoToolForm if it is no
// tool's.
constexpr int FindToolForm(std::string_view windowClass, std::string_view title) {
    for (std::size_t i = 0; i < kToolForms.size(); ++i) {
        if (HasToolForm(kToolForms[i], windowClass, title)) {
            return static_cast<int>(i);
        }
    }
    return kNoToolForm;
}

}  // namespace spellwick::bridge

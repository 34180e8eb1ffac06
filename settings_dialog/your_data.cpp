#include "settings_dialog/your_data.h"

#include <QHBoxLayout>
#include <filesystem>

#include "settings_dialog/controls.h"

namespace spellwick {

namespace {

FileQuestion Question(const std::string& title, const std::string& extension) {
    FileQuestion question;
    question.title = title;
    question.filterName = "Spellwick's settings (*" + extension + ")";
    question.filterPattern = "*" + extension;
    question.defaultExtension = extension;
    return question;
}

}  // namespace

YourData::YourData(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      CommandExport(MakeButton("CommandExport", "Save all to a file...",
                               "Writes the settings and all characters to one file")),
      CommandImport(MakeButton("CommandImport", "Load from a file...",
                               "Takes the settings and characters of such a file, or one of its "
                               "characters; a copy of yours is kept")),
      CommandRemove(MakeButton("CommandRemove", "Remove this character",
                               "Removes the character that the title of Spellwick names; a copy "
                               "of all settings is kept")),
      m_services(services),
      m_events(services.failures, this) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(CommandExport);
    row->addWidget(CommandImport);
    row->addStretch();
    row->addWidget(CommandRemove);
    setEnabled(services.data != nullptr);
    m_events.On(CommandExport, &QPushButton::clicked, "saving all to a file",
                [this] { ClickExport(); });
    m_events.On(CommandImport, &QPushButton::clicked, "loading from a file",
                [this] { ClickImport(); });
    m_events.On(CommandRemove, &QPushButton::clicked, "removing a character",
                [this] { ClickRemove(); });
}

QPushButton* YourData::MakeButton(const char* name, const char* caption, const char* toolTip) {
    auto* button = Named(new QPushButton(QLatin1String(caption), this), QLatin1String(name));
    button->setAutoDefault(false);
    button->setToolTip(QLatin1String(toolTip));
    return button;
}

bool YourData::IsDone(const std::string& trouble) {
    if (!trouble.empty()) {
        m_services.boxes.Show({.text = trouble, .icon = BoxIcon::kExclamation});
    }
    return trouble.empty();
}

bool YourData::Asks(const std::string& question) {
    return m_services.boxes.Show(
               {.text = question, .icon = BoxIcon::kQuestion, .buttons = BoxButtons::kYesNo}) ==
           BoxAnswer::kYes;
}

void YourData::ClickExport() {
    const std::string extension = m_services.data->Extension();
    FileQuestion question = Question("Save all to a file", extension);
    question.fileName = "spellwick-settings" + extension;
    const auto file = m_services.dialogs.PickFileToSave(question);
    if (!file) {
        return;
    }
    std::error_code ignored;
    if (std::filesystem::exists(*file, ignored) &&
        !Asks("There is a file \"" + file->string() + "\". Replace it ?")) {
        return;
    }
    if (IsDone(m_services.data->Export(*file))) {
        m_services.boxes.Show(
            {.text = "All settings and characters are saved in\n" + file->string(),
             .icon = BoxIcon::kInformation});
    }
}

void YourData::ClickImport() {
    const auto file = m_services.dialogs.PickFileToOpen(
        Question("Load from a file", m_services.data->Extension()));
    if (!file) {
        return;
    }
    const ReadSettings read = m_services.data->Open(*file);
    if (!IsDone(read.trouble)) {
        return;
    }
    const std::vector<std::string> characters = PlayerData::Characters(read.sections);
    std::vector<std::string> choices{"All characters and the settings"};
    choices.insert(choices.end(), characters.begin(), characters.end());
    const auto chosen =
        m_services.dialogs.PickOne("Load from a file", "What is to be loaded ?", choices);
    if (!chosen) {
        return;
    }
    const std::optional<std::string> character =
        *chosen == 0 ? std::nullopt : std::optional(characters.at(*chosen - 1));
    if (IsDone(m_services.data->Import(read.sections, character))) {
        m_services.boxes.Show({.text = (character ? "The character \"" + *character + "\" is"
                                                  : std::string("All characters and the settings "
                                                                "are")) +
                                       " loaded. A copy of your settings of before is kept.",
                               .icon = BoxIcon::kInformation});
        emit Replaced();
    }
}

void YourData::ClickRemove() {
    const std::string character = m_services.data->Current();
    if (character.empty()) {
        IsDone("There is no character to remove.");
        return;
    }
    if (!Asks("Remove \"" + character +
              "\" with its counters, skills and texts ? A copy of all settings is kept.")) {
        return;
    }
    if (IsDone(m_services.data->RemoveCurrent())) {
        emit Replaced();
    }
}

}  // namespace spellwick

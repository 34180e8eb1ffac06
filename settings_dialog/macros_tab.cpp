#include "settings_dialog/macros_tab.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "model/macro_keys.h"
#include "store/macro_folder.h"
#include "text/number_forms.h"
#include "text/utf8.h"
#include "widgets/form_font.h"

namespace spellwick {

namespace {

// Two blocks of four spells, with the same columns: icon, name, key, three marks.
constexpr int kBlockRows = 4;
constexpr int kBlockColumns = 7;
struct MacrosGrid {
    enum Row { kPageRow, kFirstSpellRow, kMeditationRow = kFirstSpellRow + kBlockRows, kHintRow };
};

constexpr int kTallest = 1000;

constexpr const char* kUnsetFileName = "NewMacros.txt";

constexpr const char* kReadNotice =
    "When loading macros, keep in mind that each character uses its own macros.txt file.\r\n"
    "You can find these in the various subdirectories of the directory you installed UO in.\r\n"
    "Look in Desktop\\[account name]\\[shard name]\\[character name]\\macros.txt";
constexpr const char* kWriteNotice =
    "Make sure you do NOT overwrite your current macros.txt file!\r\n"
    "Save the spell macros file under a different name and merge the two macro files later.\r\n"
    "Keep in mind that each character uses its own macros.txt file.\r\n"
    "You can find these in the various subdirectories of the directory you installed UO in.\r\n"
    "Look in Desktop\\[account name]\\[shard name]\\[character name]\\macros.txt";

QStringList MacroPages() {
    QStringList pages;
    for (int level = 1; level <= 8; ++level) {
        pages << QStringLiteral("Level %1 spells").arg(level);
    }
    return pages << QStringLiteral("Necromancer L1 spells")
                 << QStringLiteral("Necromancer L2 spells") << QStringLiteral("Paladin L1 spells")
                 << QStringLiteral("Paladin L2 spells");
}

}  // namespace

MacrosTab::MacrosTab(const SettingsServices& services, CommonDialog& commonDialog, QWidget* parent)
    : SettingsTab(services, parent),
      ComboMacro(Named(new ChoiceBox(this), QStringLiteral("ComboMacro"),
                       QStringLiteral("Page of spells"))),
      m_commonDialog(commonDialog),
      m_files(services, [this](const std::string& text) { ShowHint(text); }) {
    m_events.On(ComboMacro, &QComboBox::activated, "choosing a page of spells",
                [this] { RefreshMacroPage(); });
    for (int line = 0; line < kSlotCount; ++line) {
        Image[static_cast<std::size_t>(line)] =
            Named(new SpellPicture(services.pictures.clip[0], this), IndexedName("Image", line));
        MakeName(line);
        MakeLine(line);
    }
    MakeLine(kMeditationLine);
    NameLine(kMeditationLine, QStringLiteral("Meditation"));
    CommandMacroWrite = Named(new QPushButton(QStringLiteral("Save Spell Macros to File"), this),
                              QStringLiteral("CommandMacroWrite"));
    CommandMacroRead = Named(new QPushButton(QStringLiteral("Load Spell Macros from File"), this),
                             QStringLiteral("CommandMacroRead"));
    m_events.On(CommandMacroWrite, &QPushButton::clicked, "saving the spell macros to a file",
                [this] { ClickWrite(); });
    m_events.On(CommandMacroRead, &QPushButton::clicked, "loading the spell macros from a file",
                [this] { ClickRead(); });
    PlaceControls();
}

std::size_t MacrosTab::Place(int line) {
    return static_cast<std::size_t>(line == kMeditationLine ? kSlotCount : line);
}

void MacrosTab::MakeName(int line) {
    auto* name = Named(new QLabel(this), IndexedName("LabelMacro", line));
    name->setTextFormat(Qt::PlainText);
    name->setWordWrap(true);
    m_names[static_cast<std::size_t>(line)] = name;
}

// As narrow as the longest word of a name allows.
int MacrosTab::WidthOfNames() const {
    const QFontMetrics metrics(font());
    int widest = 0;
    for (i32 row = 0; row <= std::min(kLastPagedRow, m_state.Spells.Last()); ++row) {
        for (const QString& word : ToQString(m_state.Spells(row).Name).split(QLatin1Char(' '))) {
            widest = std::max(widest, metrics.horizontalAdvance(word));
        }
    }
    return widest + 2;
}

// As low as the name of the most lines allows, but no lower than its picture, so that no row jumps
// when the page changes.
int MacrosTab::HeightOfNames(int width) const {
    const QFontMetrics metrics(font());
    int highest = Image[0]->height();
    for (i32 row = 0; row <= std::min(kLastPagedRow, m_state.Spells.Last()); ++row) {
        const QString name = ToQString(m_state.Spells(row).Name);
        const QRect room(0, 0, width, kTallest);
        highest = std::max(highest, metrics.boundingRect(room, Qt::TextWordWrap, name).height());
    }
    return highest;
}

void MacrosTab::MakeLine(int line) {
    Line& made = m_lines[Place(line)];
    made.key = Named(new EntryBox(this), IndexedName("TextMacro", line));
    made.key->setAlignment(Qt::AlignHCenter);
    connect(made.key, &EntryBox::GotFocus, made.key, &QLineEdit::selectAll);
    m_events.On(made.key, &EntryBox::LostFocus, "changing a macro key",
                [this, line] { KeyLostFocus(line); });
    made.alt = MakeMark("CheckAlt", "Alt", line, &MacrosTab::ClickAlt);
    made.ctrl = MakeMark("CheckCtrl", "Ctrl", line, &MacrosTab::ClickCtrl);
    made.shift = MakeMark("CheckShift", "Shift", line, &MacrosTab::ClickShift);
}

QCheckBox* MacrosTab::MakeMark(const char* name, const char* caption, int line,
                               void (MacrosTab::*clicked)(int)) {
    auto* mark = Named(new QCheckBox(QLatin1String(caption), this), IndexedName(name, line));
    m_events.On(mark, &QCheckBox::clicked, "changing a macro key",
                [this, line, clicked] { (this->*clicked)(line); });
    return mark;
}

void MacrosTab::PlaceControls() {
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    constexpr int kAllColumns = 2 * kBlockColumns - 1;
    grid->addWidget(ComboMacro, MacrosGrid::kPageRow, 0, 1, kBlockColumns - 1);
    for (int line = 0; line < kSlotCount; ++line) {
        PlaceLine(line, MacrosGrid::kFirstSpellRow + line % kBlockRows,
                  line / kBlockRows * kBlockColumns);
    }
    constexpr int kBlockGap = 24;
    grid->setColumnMinimumWidth(kBlockColumns - 1, kBlockGap);

    grid->setRowMinimumHeight(MacrosGrid::kMeditationRow, Image[0]->height());
    QLabel* meditation = MakeCaption(this, 10, QStringLiteral("Macro key for Meditation skill"));
    meditation->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(meditation, MacrosGrid::kMeditationRow, 0, 1, kBlockColumns + 2);
    PlaceLine(kMeditationLine, MacrosGrid::kMeditationRow, kBlockColumns);
    int row = MacrosGrid::kHintRow;
    for (QLabel* hint :
         {MakeCaption(this, 9, QStringLiteral("Enter letters, numbers, Fn/Fnn for function keys.")),
          MakeCaption(
              this, 11,
              QStringLiteral("Do not use only Shift with a letter or number as this will fire the "
                             "macro when typing normal text."))}) {
        hint->setWordWrap(true);
        grid->addWidget(hint, row++, 0, 1, kAllColumns + 1);
    }

    auto* files = new QHBoxLayout;
    files->setContentsMargins(0, 8, 0, 0);
    files->setSpacing(8);
    files->addWidget(CommandMacroWrite);
    files->addWidget(CommandMacroRead);
    files->addStretch();
    grid->addLayout(files, row, 0, 1, kAllColumns + 1);
    grid->setColumnStretch(kAllColumns, 1);
    grid->setRowStretch(row + 1, 1);
}

void MacrosTab::PlaceLine(int line, int gridRow, int firstColumn) {
    constexpr int kKeyWidth = 52;
    auto* grid = static_cast<QGridLayout*>(layout());
    const Line& placed = m_lines[Place(line)];
    if (line != kMeditationLine) {
        grid->addWidget(Image[static_cast<std::size_t>(line)], gridRow, firstColumn);
        grid->addWidget(m_names[static_cast<std::size_t>(line)], gridRow, firstColumn + 1);
    }
    placed.key->setFixedWidth(Scaled(kKeyWidth));
    grid->addWidget(placed.key, gridRow, firstColumn + 2);
    grid->addWidget(placed.alt, gridRow, firstColumn + 3);
    grid->addWidget(placed.ctrl, gridRow, firstColumn + 4);
    grid->addWidget(placed.shift, gridRow, firstColumn + 5);
}

void MacrosTab::NameLine(int line, const QString& of) {
    const Line& named = m_lines[Place(line)];
    named.key->setAccessibleName(QStringLiteral("Key of %1").arg(of));
    for (QCheckBox* mark : {named.alt, named.ctrl, named.shift}) {
        mark->setAccessibleName(QStringLiteral("%1 for %2").arg(mark->text(), of));
    }
}

i32 MacrosTab::MacroOf(int line) const {
    return MacroOfLine(ComboMacro->currentIndex(), line);
}

void MacrosTab::Load() {
    const int width = WidthOfNames();
    const int height = HeightOfNames(width);
    for (QLabel* name : m_names) {
        name->setFixedWidth(width);
        name->setMinimumHeight(height);
    }
    ComboMacro->addItems(MacroPages());
    ComboMacro->setCurrentIndex(0);
    RefreshMacroPage();
}

void MacrosTab::RefreshMacroPage() {
    for (int line = 0; line < kSlotCount; ++line) {
        const i32 row = MacroOf(line) - 1;
        const QString name = ToQString(m_state.Spells(row).Name);
        SpellPicture* picture = Image[static_cast<std::size_t>(line)];
        m_names[static_cast<std::size_t>(line)]->setText(name);
        picture->SetRow(row);
        picture->setToolTip(name);
        picture->setAccessibleName(name);
        NameLine(line, name.isEmpty() ? QStringLiteral("no spell") : name);
        ShowLine(line);
    }
    ShowLine(kMeditationLine);
}

void MacrosTab::ShowLine(int line) {
    const i32 macro = MacroOf(line);
    ShowText(TextMacro(line), m_state.MacroKey(macro));
    CheckAlt(line).setChecked(m_state.MacroAlt(macro) == "%");
    CheckCtrl(line).setChecked(m_state.MacroCtrl(macro) == "^");
    CheckShift(line).setChecked(m_state.MacroShift(macro) == "+");
}

void MacrosTab::ClickAlt(int line) {
    m_state.MacroAlt(MacroOf(line)) = CheckAlt(line).isChecked() ? "%" : "";
}

void MacrosTab::ClickCtrl(int line) {
    m_state.MacroCtrl(MacroOf(line)) = CheckCtrl(line).isChecked() ? "^" : "";
}

void MacrosTab::ClickShift(int line) {
    m_state.MacroShift(MacroOf(line)) = CheckShift(line).isChecked() ? "+" : "";
}

void MacrosTab::KeyLostFocus(int line) {
    if (m_givesFocusBack) {
        return;
    }
    const i32 macro = MacroOf(line);
    // ODDITY(blank-key-two-boxes): clearing a spell's key brings up two message boxes in turn,
    // clearing Meditation's only the second; kept because the first names the mistake and the
    // second answers anything that is not a key.
    if (TextMacro(line).text().isEmpty() && line < kSlotCount) {
        Complain(line, kKeyLeftBlank);
    }
    const auto key = MacroKeyOfEntry(ToText(TextMacro(line).text()));
    if (!key) {
        Complain(line, kKeyNotValid);
        return;
    }
    ShowText(TextMacro(line), *key);
    m_state.MacroKey(macro) = *key;
}

void MacrosTab::DropRefusedKeys() {
    const auto drop = [this](int line) {
        EntryBox& key = TextMacro(line);
        if (!MacroKeyOfEntry(ToText(key.text()))) {
            key.Abandon();
            ShowText(key, m_state.MacroKey(MacroOf(line)));
        }
    };
    for (int line = 0; line < kSlotCount; ++line) {
        drop(line);
    }
    drop(kMeditationLine);
}

void MacrosTab::Complain(int line, std::string_view text) {
    m_services.boxes.Show({.text = std::string(text), .icon = BoxIcon::kCritical});
    // The edit that was about to get the focus is unchanged. Checking it too could refuse it as
    // well, and the two would take the focus from each other without end.
    m_givesFocusBack = true;
    TextMacro(line).setFocus(Qt::OtherFocusReason);
    m_givesFocusBack = false;
}

FileQuestion MacrosTab::QuestionForFile(const char* title) const {
    const std::filesystem::path ofClassic = FindMacroFolder(m_services.installation);
    const std::filesystem::path ofCharacter = m_services.companion.CharacterFolder();
    return {.title = title,
            .filterName = "Text (*.txt)",
            .filterPattern = "*.txt",
            .otherFilterName = "Macros of ClassicUO and TazUO (*.xml)",
            .otherFilterPattern = "*.xml",
            .startsWithOther = !ofCharacter.empty(),
            .defaultExtension = {},
            .folder = ofCharacter.empty() ? ofClassic : ofCharacter,
            .fileName = {}};
}

void MacrosTab::ClickRead() {
    const FileQuestion question = QuestionForFile("Load Macro File");
    m_services.boxes.Show({.text = kReadNotice, .icon = BoxIcon::kExclamation});
    // ODDITY(cancelled-load): cancelling a load loads the last file again; kept because the dialog
    // still holds its name, and the same file changes nothing.
    IgnoreFailure([&] {
        m_commonDialog.ShowOpen(question);
        m_files.Load(PathFromUtf8(m_commonDialog.FileName));
    });
    RefreshMacroPage();
}

void MacrosTab::ClickWrite() {
    FileQuestion question = QuestionForFile("Save Macro File as");
    question.defaultExtension = ".txt";
    m_services.boxes.Show({.text = kWriteNotice, .icon = BoxIcon::kExclamation});
    m_commonDialog.FileName = kUnsetFileName;
    // ODDITY(cancelled-save): once a colour has been chosen in this run, cancelling the save of the
    // macros ends the program, with all data saved; kept because one dialog serves colours and
    // files, and a cancel counts as a failure from then on.
    m_commonDialog.ShowSave(question);
    if (m_commonDialog.FileName != kUnsetFileName) {
        m_files.Save(PathFromUtf8(m_commonDialog.FileName));
    }
}

void MacrosTab::ShowHint(const std::string& text) {
    if (m_hints == nullptr) {
        m_hints = new Hints(*window(), m_services.failures);
    }
    m_hints->Show(ToQString(text));
}

}  // namespace spellwick

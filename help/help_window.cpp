#include "help/help_window.h"

#include <QFile>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QVBoxLayout>
#include <array>
#include <initializer_list>

#include "widgets/form_font.h"

namespace spellwick {

namespace {

constexpr QSize kSize(860, 600);
constexpr int kChaptersWidth = 270;
constexpr int kWidestPicture = 520;
constexpr int kMargin = 4;
constexpr int kLowestChapter = 2;  // level of the headings that are chapters

struct ControlNames {
    const char* picture;
    std::array<const char*, 4> starts;  // of the names of its controls
};

constexpr std::array kPictures{
    ControlNames{"page", {"SpellIcon", "LabelAmount", "LabelChance", "CheckCircle"}},
    ControlNames{"counters", {"Reagent", "imgReg", "UpDown1", ""}},
    ControlNames{"bags", {"ComboReagent", "", "", ""}},
    ControlNames{"tithes", {"ImageAnkh", "LabelTithes", "", ""}},
    ControlNames{"buttons", {"Command", "", "", ""}},
};

QStringList PictureNames() {
    QStringList names{QStringLiteral("window")};
    for (const ControlNames& row : kPictures) {
        names.append(QLatin1String(row.picture));
    }
    return names;
}

// The wide strip is wider than the text.
QPixmap Fitted(const QPixmap& picture) {
    const double ratio = picture.devicePixelRatio();
    if (picture.width() <= kWidestPicture * ratio) {
        return picture;
    }
    return picture.scaledToWidth(qRound(kWidestPicture * ratio), Qt::SmoothTransformation);
}

bool IsNamed(const QWidget& control, const ControlNames& row) {
    const QString name = control.objectName().section(u'(', 0, 0);
    for (const char* start : row.starts) {
        if (*start != '\0' && name == QLatin1String(start)) {
            return true;
        }
    }
    return false;
}

}  // namespace

QPixmap PictureOfControls(QWidget& window, const QString& name) {
    if (name == QLatin1String("window")) {
        return window.grab();
    }
    for (const ControlNames& row : kPictures) {
        if (name != QLatin1String(row.picture)) {
            continue;
        }
        QRect all;
        for (const QWidget* control : window.findChildren<QWidget*>()) {
            if (control->isVisibleTo(&window) && IsNamed(*control, row)) {
                all |= QRect(control->mapTo(&window, QPoint(0, 0)), control->size());
            }
        }
        const QRect shown = all.adjusted(-kMargin, -kMargin, kMargin, kMargin) & window.rect();
        return all.isEmpty() ? QPixmap() : window.grab(shown);
    }
    return {};
}

HelpWindow::HelpWindow(QWidget& window, FailureSink& failures, QWidget* parent)
    : QDialog(parent),
      ListChapters(new QListWidget(this)),
      TextHelp(new QTextBrowser(this)),
      TextSearch(new QLineEdit(this)),
      CommandNext(new QPushButton(QStringLiteral("&Next"), this)),
      CommandPrevious(new QPushButton(QStringLiteral("&Previous"), this)),
      LabelSearch(new QLabel(this)),
      m_window(window),
      m_events(failures, this) {
    setObjectName(QStringLiteral("FormHelp"));
    setWindowTitle(QStringLiteral("Spellwick - Help"));
    setAccessibleName(QStringLiteral("Help"));
    const struct {
        QWidget* control;
        const char* name;
        const char* accessibleName;
    } rows[] = {{ListChapters, "ListChapters", "Chapters"},
                {TextHelp, "TextHelp", "Help"},
                {TextSearch, "TextSearch", "Search"},
                {CommandNext, "CommandNext", "Next place"},
                {CommandPrevious, "CommandPrevious", "Previous place"},
                {LabelSearch, "LabelSearch", "Result of the search"}};
    for (const auto& row : rows) {
        row.control->setObjectName(QLatin1String(row.name));
        row.control->setAccessibleName(QLatin1String(row.accessibleName));
    }
    MakeLayout();
    ConnectAll();
    resize(Scaled(kSize).boundedTo(screen()->availableGeometry().size()));
}

void HelpWindow::MakeLayout() {
    TextSearch->setPlaceholderText(QStringLiteral("Search"));
    TextSearch->setClearButtonEnabled(true);
    TextHelp->setOpenLinks(false);
    CommandPrevious->setAutoDefault(false);
    CommandNext->setAutoDefault(false);
    CommandNext->setDefault(true);  // Enter in the search
    auto* search = new QHBoxLayout;
    search->addWidget(TextSearch, 1);
    search->addWidget(CommandPrevious);
    search->addWidget(CommandNext);
    auto* split = new QSplitter(this);
    split->addWidget(ListChapters);
    split->addWidget(TextHelp);
    split->setStretchFactor(1, 1);
    split->setChildrenCollapsible(false);
    split->setSizes({Scaled(kChaptersWidth), Scaled(kSize.width() - kChaptersWidth)});
    auto* all = new QVBoxLayout(this);
    all->addLayout(search);
    all->addWidget(LabelSearch);
    all->addWidget(split, 1);
    LabelSearch->hide();
    ListChapters->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabOrder(TextSearch, CommandPrevious);
    setTabOrder(CommandPrevious, CommandNext);
    setTabOrder(CommandNext, ListChapters);
    setTabOrder(ListChapters, TextHelp);
    TextSearch->setFocus();
}

void HelpWindow::ConnectAll() {
    m_events.On(ListChapters, &QListWidget::currentRowChanged, "choosing a chapter",
                [this](int chapter) { ShowChapter(chapter); });
    m_events.On(CommandNext, &QPushButton::clicked, "searching the help", [this] { Find(false); });
    m_events.On(CommandPrevious, &QPushButton::clicked, "searching the help",
                [this] { Find(true); });
    auto* search = new QShortcut(QKeySequence::Find, this);
    m_events.On(search, &QShortcut::activated, "searching the help", [this] {
        TextSearch->setFocus(Qt::ShortcutFocusReason);
        TextSearch->selectAll();
    });
}

bool HelpWindow::Load() {
    QFile file(QStringLiteral(":/help/help.md"));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    auto* text = new QTextDocument(TextHelp);
    text->setDefaultFont(TextHelp->font());
    text->setMarkdown(QString::fromUtf8(file.readAll()));
    // Not when the text asks for them, in the middle of its layout: drawing the window lays out
    // what belongs to it, and so this text again.
    for (const QString& name : PictureNames()) {
        text->addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("control:") + name),
                          Fitted(PictureOfControls(m_window, name)));
    }
    TextHelp->setDocument(text);
    m_places.clear();
    ListChapters->clear();
    for (QTextBlock block = TextHelp->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level > 1 && level <= kLowestChapter) {
            m_places.push_back(block.position());
            ListChapters->addItem(block.text());
        }
    }
    TextHelp->moveCursor(QTextCursor::Start);
    return !m_places.empty();
}

void HelpWindow::ShowChapter(int chapter) {
    if (chapter < 0 || chapter >= static_cast<int>(m_places.size())) {
        return;
    }
    QTextCursor place(TextHelp->document());
    // From the end, so that the chapter's head stands at the top of the view.
    place.movePosition(QTextCursor::End);
    TextHelp->setTextCursor(place);
    place.setPosition(m_places[static_cast<std::size_t>(chapter)]);
    TextHelp->setTextCursor(place);
    TextHelp->verticalScrollBar()->setValue(TextHelp->verticalScrollBar()->value() +
                                            TextHelp->cursorRect().top() - kMargin);
}

void HelpWindow::Find(bool backward) {
    const QString text = TextSearch->text();
    if (text.isEmpty()) {
        LabelSearch->hide();
        return;
    }
    const QTextDocument::FindFlags direction =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    bool found = TextHelp->find(text, direction);
    if (!found) {
        const QTextCursor before = TextHelp->textCursor();
        TextHelp->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
        found = TextHelp->find(text, direction);
        if (!found) {
            TextHelp->setTextCursor(before);
        }
    }
    LabelSearch->setText(QStringLiteral("\"%1\" is not in the help.").arg(text));
    LabelSearch->setVisible(!found);
}

}  // namespace spellwick

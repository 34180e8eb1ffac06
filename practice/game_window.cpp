#include "practice/game_window.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <utility>

#include "practice/key_names.h"

namespace spellwick::practice {
namespace {

constexpr auto kStyle = R"(
    QWidget { background: #1d1915; color: #e4d6b4; }
    QListWidget { background: #2a241d; border: none; padding: 6px 10px; font-size: 13px; }
    QLabel#Line { background: #231e18; padding: 5px 12px; color: #fff3c8; font-size: 13px; }
    QPushButton { background: #3a3026; border: 1px solid #5b4b39; border-radius: 4px;
                  padding: 5px 10px; }
    QPushButton:hover { background: #4a3d2f; }
    QPushButton:checked { background: #6b4f25; border-color: #c9a35a; color: #fff3c8; }
    QPushButton:disabled { color: #7d7159; }
    QScrollBar:vertical { background: #2a241d; width: 8px; }
    QScrollBar::handle:vertical { background: #5b4b39; border-radius: 4px; min-height: 20px; }
    QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
)";

QString FromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

struct Shown {
    QString text;
    QColor colour;
};

Shown ShownEntry(const JournalEntry& entry, const QString& speaker) {
    const QString text = QString::fromStdString(entry.text);
    switch (entry.kind) {
        case JournalEntry::Kind::kKey:
            return {QObject::tr("Key  %1").arg(text), QColor(0xb0, 0xa0, 0x80)};
        case JournalEntry::Kind::kCast:
            return {QObject::tr("%1 casts %2.").arg(speaker, text), QColor(0x9f, 0xd6, 0xf2)};
        case JournalEntry::Kind::kSay:
            return {QObject::tr("%1: %2").arg(speaker, text), QColor(0xff, 0xf3, 0xc8)};
        case JournalEntry::Kind::kTitle:
            return {QObject::tr("\u2014 %1 \u2014").arg(text), QColor(0xc9, 0xa3, 0x5a)};
    }
    return {};
}

}  // namespace

GameWindow::GameWindow(std::function<void(const JournalEntry&)> record, Play play)
    : m_record(std::move(record)),
      m_client(play.client),
      m_speech(std::move(play.keys)),
      m_scene(new Scene(this)),
      m_journal(new QListWidget(this)),
      m_line(new QLabel(this)),
      m_logout(new QPushButton(tr("Log out"), this)) {
    setObjectName(QStringLiteral("GameWindow"));
    setStyleSheet(QString::fromLatin1(kStyle));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);

    m_journal->setFocusPolicy(Qt::NoFocus);
    m_journal->setSelectionMode(QAbstractItemView::NoSelection);
    m_journal->setAccessibleName(tr("Journal"));
    m_journal->setWordWrap(true);
    m_journal->setObjectName(QStringLiteral("Journal"));
    m_line->setObjectName(QStringLiteral("Line"));
    m_line->setTextFormat(Qt::PlainText);
    m_line->setAccessibleName(tr("Line being typed"));

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(10, 8, 10, 10);
    bar->setSpacing(8);
    for (std::size_t index = 0; index < kRoster.size(); ++index) {
        const Character& character = kRoster.at(index);
        auto* button = new QPushButton(
            FromUtf8(character.name) + QChar::LineFeed + FromUtf8(character.server), this);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setAccessibleName(
            tr("Log in as %1 on %2").arg(FromUtf8(character.name), FromUtf8(character.server)));
        connect(button, &QPushButton::clicked, this,
                [this, index] { EnterAs(static_cast<int>(index) + 1); });
        m_characters.at(index) = button;
        bar->addWidget(button, 1);
    }
    m_logout->setFocusPolicy(Qt::NoFocus);
    m_logout->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
    connect(m_logout, &QPushButton::clicked, this, [this] { EnterAs(0); });
    bar->addWidget(m_logout);

    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(m_scene);
    whole->addWidget(m_journal, 1);
    whole->addWidget(m_line);
    whole->addLayout(bar);
    resize(520, 480);
    EnterAs(0);
    if (ShowsStatistics(m_client)) {
        constexpr int kBetweenChanges = 500;
        auto* statistics = new QTimer(this);
        connect(statistics, &QTimer::timeout, this, [this] { ChangeStatistics(); });
        statistics->start(kBetweenChanges);
    }
}

void GameWindow::Obey(const GameCommand& command) {
    switch (command.kind) {
        case GameCommand::Kind::kLogin:
            EnterAs(command.character);
            break;
        case GameCommand::Kind::kLogout:
            EnterAs(0);
            break;
        case GameCommand::Kind::kTitle:
            SetTitle(QString::fromStdString(command.title));
            break;
        case GameCommand::Kind::kRaise:
            raise();
            activateWindow();
            break;
        case GameCommand::Kind::kQuit:
            break;
    }
}

bool GameWindow::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void GameWindow::keyPressEvent(QKeyEvent* event) {
    for (const JournalEntry& entry : m_speech.Press(PressOf(*event))) {
        Add(entry);
    }
    ShowSpeech();
}

void GameWindow::EnterAs(int character) {
    for (std::size_t index = 0; index < m_characters.size(); ++index) {
        m_characters.at(index)->setChecked(static_cast<int>(index) + 1 == character);
    }
    m_character = character;
    m_logout->setEnabled(character != 0);
    m_speech.Clear();
    if (character == 0) {
        m_speaker = tr("You");
        m_scene->ShowCharacter({}, {});
        SetTitle(QString::fromStdString(LoginTitleOf(m_client)));
    } else {
        const Character& chosen = kRoster.at(static_cast<std::size_t>(character) - 1);
        m_speaker = FromUtf8(chosen.name);
        m_scene->ShowCharacter(m_speaker, FromUtf8(chosen.server));
        SetTitle(QString::fromStdString(TitleOf(m_client, chosen, m_hits)));
    }
    ShowSpeech();
}

void GameWindow::ChangeStatistics() {
    constexpr int kLeast = 80;
    if (m_character != 0) {
        m_hits = m_hits > kLeast ? m_hits - 1 : 100;
        const Character& character = kRoster.at(static_cast<std::size_t>(m_character) - 1);
        setWindowTitle(QString::fromStdString(TitleOf(m_client, character, m_hits)));
    }
}

void GameWindow::SetTitle(const QString& title) {
    setWindowTitle(title);
    Add({JournalEntry::Kind::kTitle, title.toStdString()});
}

void GameWindow::Add(const JournalEntry& entry) {
    const Shown shown = ShownEntry(entry, m_speaker);
    auto* item = new QListWidgetItem(shown.text, m_journal);
    item->setForeground(shown.colour);
    m_journal->scrollToBottom();
    if (entry.kind == JournalEntry::Kind::kCast || entry.kind == JournalEntry::Kind::kSay) {
        m_scene->ShowWords(QString::fromStdString(entry.text),
                           entry.kind == JournalEntry::Kind::kCast);
    }
    m_record(entry);
}

void GameWindow::ShowSpeech() {
    m_line->setText(QStringLiteral("\u203a ") + QString::fromStdString(m_speech.Text()));
}

}  // namespace spellwick::practice

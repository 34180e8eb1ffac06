#include "settings_dialog/about_tab.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "settings_dialog/controls.h"
#include "settings_dialog/web_pages.h"
#include "widgets/pictures.h"

namespace spellwick {

namespace {

constexpr int kPictureSide = 64;

QLabel* MakeCredit(QWidget* parent, const char* name, const char* text) {
    auto* credit = Named(new QLabel(QLatin1String(text), parent), QLatin1String(name));
    credit->setAlignment(Qt::AlignHCenter);
    return credit;
}

// The program's icon at a large size.
QPixmap Icon(double devicePixelRatio) {
    QPixmap icon = ReadPicture(QStringLiteral("spellwick-256"));
    if (icon.isNull()) {
        return icon;
    }
    icon = icon.scaledToHeight(qRound(kPictureSide * devicePixelRatio), Qt::SmoothTransformation);
    icon.setDevicePixelRatio(devicePixelRatio);
    return icon;
}

}  // namespace

AboutTab::AboutTab(const SettingsServices& services, QWidget* parent)
    : SettingsTab(services, parent),
      Image1(Named(new QLabel(this), QStringLiteral("Image1"),
                   QStringLiteral("The icon of Spellwick"))),
      LabelVersion(MakeCredit(this, "LabelVersion", "")),
      CommandWeb(
          Named(new QPushButton(QStringLiteral("Click this to go to the Mira Talon website"), this),
                QStringLiteral("CommandWeb"))),
      TextFacts(Named(new QPlainTextEdit(this), QStringLiteral("TextFacts"),
                      QStringLiteral("Version, data and licences"))),
      CommandCopy(
          Named(new QPushButton(QStringLiteral("Copy"), this), QStringLiteral("CommandCopy"))) {
    TextFacts->setReadOnly(true);
    TextFacts->setTabChangesFocus(true);
    TextFacts->setLineWrapMode(QPlainTextEdit::NoWrap);
    CommandCopy->setAutoDefault(false);
    CommandCopy->setToolTip(QStringLiteral("Copies the text on the left"));
    Image1->setFixedHeight(kPictureSide);
    Image1->setAlignment(Qt::AlignHCenter);
    m_events.On(CommandWeb, &QPushButton::clicked, "opening a web page", [this] { ClickWeb(); });

    m_events.On(CommandCopy, &QPushButton::clicked, "copying the version", [this] { ClickCopy(); });

    auto* all = new QVBoxLayout(this);
    all->setSpacing(8);
    all->addStretch();
    all->addWidget(Image1);
    all->addWidget(LabelVersion);
    all->addSpacing(12);
    all->addWidget(MakeCredit(this, "Label1(5)", "Written by the makers of Spellwick"));
    all->addWidget(
        MakeCredit(this, "Label3", "With thanks to the spell casters who tried every version"));
    all->addWidget(MakeCredit(this, "Label4", "Questions and ideas reach us through the website"));
    all->addSpacing(12);
    all->addWidget(CommandWeb, 0, Qt::AlignHCenter);
    auto* facts = new QHBoxLayout;
    facts->setContentsMargins(9, 4, 9, 0);
    facts->addWidget(TextFacts);
    facts->addWidget(CommandCopy, 0, Qt::AlignTop);
    all->addLayout(facts, 1);
}

void AboutTab::Load() {
    Image1->setPixmap(Icon(devicePixelRatioF()));
    LabelVersion->setText(QStringLiteral("Version: %1").arg(QLatin1String(kVersion)));
    TextFacts->setPlainText(ToQString(m_services.about));
}

void AboutTab::ClickCopy() {
    QGuiApplication::clipboard()->setText(TextFacts->toPlainText());
}

void AboutTab::ClickWeb() {
    OpenHomePage(m_services, *CommandWeb);
}

}  // namespace spellwick

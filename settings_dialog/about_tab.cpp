#include "settings_dialog/about_tab.h"

#include <QVBoxLayout>

#include "settings_dialog/controls.h"
#include "settings_dialog/web_pages.h"
#include "widgets/pictures.h"

namespace spellwick {

namespace {

constexpr int kPictureSide = 96;

QLabel* MakeCredit(QWidget* parent, const char* name, const char* text) {
    auto* credit = Named(new QLabel(QLatin1String(text), parent), QLatin1String(name));
    credit->setAlignment(Qt::AlignHCenter);
    return credit;
}

// The program's icon at a large size.
QPixmap Icon(double devicePixelRatio) {
    QPixmap icon = ReadPicture(QStringLiteral(":/pictures/spellwick-256.png"));
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
                QStringLiteral("CommandWeb"))) {
    Image1->setFixedHeight(kPictureSide);
    Image1->setAlignment(Qt::AlignHCenter);
    m_events.On(CommandWeb, &QPushButton::clicked, "opening a web page", [this] { ClickWeb(); });

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
    all->addStretch();
}

void AboutTab::Load() {
    Image1->setPixmap(Icon(devicePixelRatioF()));
    LabelVersion->setText(QStringLiteral("Version: %1").arg(QLatin1String(kVersion)));
}

void AboutTab::ClickWeb() {
    OpenHomePage(m_services, *CommandWeb);
}

}  // namespace spellwick

// Renders the tabs of the settings dialog at the density of QT_SCALE_FACTOR, for a look at them:
// render FOLDER [dark]
#include <QApplication>
#include <QPalette>

#include "tests/support/settings_fixture.h"

namespace spellwick {
namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return dark;
}

class Render : public SettingsFixture {
  public:
    Render(QString folder, QString tone) : m_target(std::move(folder)), m_tone(std::move(tone)) {}

    void TestBody() override {
        SetSaved("Settings", "CurrentPlayerName", kMira);
        SetSaved("Settings", "Pictures", "1");
        Open();
        for (int tab = 0; tab < kTabCount; ++tab) {
            ShowTab(tab);
            QCoreApplication::processEvents();
            Form().grab().save(QStringLiteral("%1/tab_%2_%3_%4.png")
                                   .arg(m_target)
                                   .arg(tab)
                                   .arg(m_tone)
                                   .arg(qApp->devicePixelRatio()));
        }
    }

  private:
    QString m_target;
    QString m_tone;
};

}  // namespace
}  // namespace spellwick

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(QStringLiteral("Fusion"));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication toolkit(argc, argv);
    const QStringList words = QApplication::arguments();
    if (words.size() < 2) {
        return 2;
    }
    const bool dark = words.contains(QStringLiteral("dark"));
    if (dark) {
        QApplication::setPalette(spellwick::DarkPalette());
    }
    spellwick::Render render(words.at(1), dark ? QStringLiteral("dark") : QStringLiteral("light"));
    render.TestBody();
    return 0;
}

// Pictures of the main window: render FOLDER [dark]. For looking at, at the density of
// QT_SCALE_FACTOR.
#include <QApplication>
#include <QPalette>

#include "link/assist_messages.h"
#include "tests/support/main_window_fixture.h"

namespace spellwick {
namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return dark;
}

class Render : public MainWindowFixture {
  public:
    Render(QString folder, QString tone) : m_target(std::move(folder)), m_tone(std::move(tone)) {}

    void TestBody() override {
        struct Row {
            const char* name;
            bool vertical;
            bool necro;
        };
        for (const Row& row :
             {Row{"vertical", true, true}, Row{"vertical_plain", true, false},
              Row{"horizontal", false, true}, Row{"horizontal_plain", false, false}}) {
            m_state = SharedState();
            SetSaved("Settings", "DisplayVertical", row.vertical ? "True" : "False");
            SetSaved("Settings", "ShowNecroRegs", row.necro ? "True" : "False");
            StartWithMira();
            State().Spellbook(28) = 1;
            ShowPage(5);
            MoveTo(Named("SpellIcon", 5));
            Reagent(2).setText(QStringLiteral("999"));
            Reagent(5).setText(QStringLiteral("1234"));
            Reagent(6).setText(QStringLiteral("12345"));
            Reagent(12).setText(QStringLiteral("-3"));
            Program().Reports().OnMessage({kAssistStats, 100, 100});
            QCoreApplication::processEvents();
            Form().grab().save(QStringLiteral("%1/%2_%3_%4.png")
                                   .arg(m_target, QLatin1String(row.name), m_tone)
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

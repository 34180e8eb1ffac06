#include "tests/support/render.h"

#include <QApplication>
#include <QPalette>
#include <QPixmap>

#include "tests/support/font_size.h"

namespace spellwick {

namespace {

QPalette DarkPalette() {
    QPalette dark(QColor(53, 53, 53), QColor(45, 45, 45));
    dark.setColor(QPalette::Base, QColor(35, 35, 35));
    dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return dark;
}

}  // namespace

void RenderTarget::Save(QWidget& form, const QString& name) const {
    const QString file =
        QStringLiteral("%1/%2_%3_%4.png").arg(m_folder, name, m_tone).arg(qApp->devicePixelRatio());
    if (!form.grab().save(file)) {
        qWarning("%s cannot be written", qPrintable(file));
    }
}

}  // namespace spellwick

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QApplication toolkit(argc, argv);
    const QStringList words = QApplication::arguments();
    if (words.size() < 2) {
        return 2;
    }
    spellwick::TakeFontSize();
    const bool dark = words.contains(QStringLiteral("dark"));
    if (dark) {
        QApplication::setPalette(spellwick::DarkPalette());
    }
    spellwick::RenderForms({words.at(1), dark ? QStringLiteral("dark") : QStringLiteral("light")});
    return 0;
}

// The baseline of the start-up figures: a bare window of the toolkit with as many controls as the
// main window, and nothing behind them.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>

namespace {

class EditableList : public QComboBox {
  public:
    explicit EditableList(QWidget* parent) : QComboBox(parent) { setEditable(true); }
};

// Makes `count` controls of a kind, in rows of twenty.
template <typename Control>
void AddControls(QWidget& window, int count, int& place) {
    for (int i = 0; i < count; ++i, ++place) {
        auto* control = new Control(&window);
        control->setGeometry(place % 20 * 42, place / 20 * 20, 40, 18);
    }
}

}  // namespace

int main(int argc, char** argv) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication toolkit(argc, argv);
    QWidget window;
    window.setFixedSize(842, 106);
    int place = 0;
    AddControls<QLineEdit>(window, 14, place);
    AddControls<EditableList>(window, 1, place);
    AddControls<QPushButton>(window, 19, place);
    AddControls<QLabel>(window, 25, place);
    AddControls<QWidget>(window, 34, place);
    window.show();
    return QApplication::exec();
}

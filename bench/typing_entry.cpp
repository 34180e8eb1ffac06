// A window with one entry of the toolkit, which appends each line that is entered to a file.
//   typing_entry FILE

#include <QApplication>
#include <QLineEdit>
#include <fstream>

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    if (QApplication::arguments().size() != 2) {
        return 2;
    }
    std::ofstream lines(QApplication::arguments().at(1).toStdString(), std::ios::app);
    QLineEdit entry;
    entry.setWindowTitle(QStringLiteral("typing entry"));
    QObject::connect(&entry, &QLineEdit::returnPressed, &entry, [&] {
        lines << entry.text().toStdString() << std::endl;
        entry.clear();
    });
    entry.resize(400, 40);
    entry.show();
    return QApplication::exec();
}

#include "main_window/form_wait.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "text/number_forms.h"
#include "widgets/form_font.h"
#include "widgets/texts.h"

namespace spellwick {

FormWait::FormWait() {
    setObjectName(QStringLiteral("FormWait"));
    setWindowTitle(QStringLiteral("Please wait"));
    setAccessibleName(QStringLiteral("Please wait"));
    setFont(FormFont());
    const auto label = [this](int index, const char* text) {
        auto* made = new QLabel(QLatin1String(text), this);
        made->setObjectName(IndexedName("Label1", index));
        return made;
    };
    QLabel* caption = label(2, "Converting...");
    m_percent = label(0, "0");
    m_percent->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("100")));
    m_percent->setAlignment(Qt::AlignRight);
    auto* figure = new QHBoxLayout;
    figure->addStretch();
    figure->addWidget(m_percent);
    figure->addWidget(label(1, "% done"));
    figure->addStretch();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(60, 16, 60, 16);
    all->addWidget(caption, 0, Qt::AlignHCenter);
    all->addLayout(figure);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

void FormWait::ShowPercent(i32 percent) {
    m_percent->setText(ToQString(PlainText(percent)));
}

}  // namespace spellwick

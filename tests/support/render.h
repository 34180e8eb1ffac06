// The main function of programs that render forms, for a look at them: PROGRAM FOLDER [dark], at
// the density of QT_SCALE_FACTOR, with a font of SPELLWICK_TEST_FONT points. A program defines
// RenderForms.
#pragma once

#include <QString>
#include <QWidget>

namespace spellwick {

class RenderTarget {
  public:
    RenderTarget(QString folder, QString tone)
        : m_folder(std::move(folder)), m_tone(std::move(tone)) {}

    // Saves the form as NAME_TONE_DENSITY.png.
    void Save(QWidget& form, const QString& name) const;

  private:
    QString m_folder;
    QString m_tone;  // light or dark
};

void RenderForms(const RenderTarget& target);

}  // namespace spellwick

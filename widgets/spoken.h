// What screen readers tell of the controls that the program draws itself. Made when they ask.
#pragma once

#include <QAccessible>
#include <QLabel>

namespace spellwick {

// The part of a control that answers a screen reader.
class Spoken {
  public:
    virtual ~Spoken() = default;

    virtual QAccessible::Role SpokenRole() const = 0;
    virtual QString SpokenName() const = 0;
    // A number that can be stepped; null for a control without one.
    virtual QVariant SpokenNumber() const { return {}; }
    virtual void SetSpokenNumber(int /*number*/) {}
    virtual int MostSpoken() const { return 0; }
    // Whether a press does something, and what a press does.
    virtual bool CanPress() const { return false; }
    virtual void Press() {}
};

// Has the toolkit ask controls that are Spoken. May be called any number of times.
void InstallSpoken();

// A figure or a text of the program, told with what it is: "Tithing points: 500".
class FigureLabel : public QLabel, public Spoken {
    Q_OBJECT

  public:
    explicit FigureLabel(QWidget* parent) : QLabel(parent) {}

    QAccessible::Role SpokenRole() const override { return QAccessible::StaticText; }
    QString SpokenName() const override;
};

// The place of a picture that is drawn by the window.
class PicturePlace : public QWidget, public Spoken {
    Q_OBJECT

  public:
    explicit PicturePlace(QWidget* parent) : QWidget(parent) {}

    QAccessible::Role SpokenRole() const override { return QAccessible::Graphic; }
    QString SpokenName() const override { return accessibleName(); }
};

}  // namespace spellwick

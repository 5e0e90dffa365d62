// Asks for the settings of a composition: name, size, rate, length and background.
#pragma once

#include "core/Project.h"

#include <QDialog>

#include <optional>

QT_FORWARD_DECLARE_CLASS(QComboBox)
QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QLineEdit)
QT_FORWARD_DECLARE_CLASS(QPushButton)
QT_FORWARD_DECLARE_CLASS(QSpinBox)

namespace rostrum {

class ColorButton;

struct CompositionSettings
{
    QByteArray name;
    QSize size{ 1920, 1080 }; // pixels
    Rate rate;
    int frames = 100;
    Color background;
};

/// "25", "23.976", "24000/1001"; a comma will do for the point. The rates of television are the exact
/// fractions behind their rounded numbers. None for anything else and beyond 1 to 1000.
std::optional<Rate> ReadRate(const QString &text);

/// The settings of a composition that there is. @param name of its item
CompositionSettings SettingsOf(const Item &item);
/// Gives a composition the settings but the name. A layer as long as the composition stays so.
void ApplySettings(const CompositionSettings &settings, Composition *composition);

class CompositionDialog : public QDialog
{
    Q_OBJECT

public:
    CompositionDialog(
        const QString &title, const CompositionSettings &settings, QWidget *parent = nullptr);

    /// What was typed; a rate that cannot be read keeps the OK button grey.
    CompositionSettings Settings() const;

private:
    void MakeFields();
    void OnPreset(int index);
    void OnChanged();

    QLineEdit *name;
    QComboBox *preset;
    QSpinBox *width;
    QSpinBox *height;
    QComboBox *rate;
    QSpinBox *frames;
    ColorButton *background;
    QLabel *rateHint; // told where the exposure sheet would not keep to the frames
    QLabel *seconds;
    QPushButton *ok = nullptr;
};

} // namespace rostrum

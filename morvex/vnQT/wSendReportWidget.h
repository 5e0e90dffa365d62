// ReportWidget: the last tab of the dashboard. It shows the log of Qt's messages and sets the colours
// of the interface; both stand in sections that fold. It can be used also while no composition is
// on show.
//
// The page owns the questions about settings files, not the answers: its two signals name a file and
// nothing in the product listens to them yet.
#pragma once

#include "ui_Log.h"
#include "ui_SendReportWidget.h"
#include "ui_Settings.h"

#include <QWidget>

class WToolBox;

class ReportWidget : public QWidget,
                     public Ui::SendReportWidget,
                     public Ui::Settings,
                     public Ui::Log
{
    Q_OBJECT

public:
    explicit ReportWidget(QWidget *parent);

signals:
    /// @param path an empty one stands for the place that is known already
    void SigGlobalSaveSettings(QString path);
    void SigGlobalLoadSettings(QString path);

public slots:
    void OnPbClearLog();
    void OnPbLoadSettings();
    void OnPbSaveSettings();
    void OnPbSaveSettingsNow();
    /// Gives the application the colours that combo box and slider name; the argument is ignored, so
    /// that one slot serves both.
    void OnColorChanged(int);

private:
    void AddSections();

    WToolBox *toolBox = nullptr;
};

#include "wSendReportWidget.h"

#include "support/vnPalette.h"
#include "wToolBox.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>

namespace {

constexpr int kLogLines = 10000; // the newest; older ones go
constexpr double kSliderUnit = 100.0; // slider steps to a whole range

} // namespace

ReportWidget::ReportWidget(QWidget *parent) : QWidget(parent)
{
    Ui::SendReportWidget::setupUi(this);
    AddSections();
    efLog->document()->setMaximumBlockCount(kLogLines);

    connect(pbClearLog, &QPushButton::clicked, this, &ReportWidget::OnPbClearLog);
    connect(pbLoadSettings, &QPushButton::clicked, this, &ReportWidget::OnPbLoadSettings);
    connect(pbSaveSettings, &QPushButton::clicked, this, &ReportWidget::OnPbSaveSettings);
    connect(pbSaveSettingsNow, &QPushButton::clicked, this, &ReportWidget::OnPbSaveSettingsNow);
    connect(cbColorSet, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        &ReportWidget::OnColorChanged);
    connect(slColorRange, &QSlider::valueChanged, this, &ReportWidget::OnColorChanged);
}

void ReportWidget::AddSections()
{
    toolBox = new WToolBox;

    auto *logPage = new QWidget;
    Ui::Log::setupUi(logPage);
    toolBox->AddItem(new ToolItem(tr("Log"), logPage, /*check=*/nullptr));

    auto *settingsPage = new QWidget;
    Ui::Settings::setupUi(settingsPage);
    toolBox->AddItem(
        new ToolItem(tr("Change/Load/Save Settings"), settingsPage, /*check=*/nullptr));

    verticalLayout_3->addWidget(toolBox);
}

void ReportWidget::OnPbClearLog()
{
    efLog->clear();
}

/// The controls do not follow the palette that is set elsewhere: the first touch of either takes the
/// colours to what both show.
void ReportWidget::OnColorChanged(int)
{
    const double range = slColorRange->value() / kSliderUnit;
    const int set = cbColorSet->currentIndex();
    QPalette colors = QApplication::palette();
    ApplyColorSet(colors, set, range);
    QApplication::setPalette(colors);
}

void ReportWidget::OnPbLoadSettings()
{
    QFileDialog dialog(this, tr("Select Config File to Load"), QDir::homePath(), tr("*.ini"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() == QDialog::Accepted)
        emit SigGlobalLoadSettings(dialog.selectedFiles().value(0));
}

/// The file need not exist yet.
void ReportWidget::OnPbSaveSettings()
{
    QFileDialog dialog(this, tr("Save Config as"), QDir::homePath(), tr("*.ini"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("ini"));
    if (dialog.exec() == QDialog::Accepted)
        emit SigGlobalSaveSettings(dialog.selectedFiles().value(0));
}

void ReportWidget::OnPbSaveSettingsNow()
{
    emit SigGlobalSaveSettings(QString());
}

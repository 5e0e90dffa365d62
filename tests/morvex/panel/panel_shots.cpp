// Draws the whole panel over a small project, at several sizes, tab by tab, in the dark and in the
// light colours, into PNG files. For the eye; it tests nothing.
//
//     xvfb-run build/dev/tests/panel_shots FOLDER [style]
#include "PanelFixture.h"

#include "T_Types/T_QtEditTab.h"
#include "support/vnPalette.h"
#include "vnQT/wToolBox.h"

#include <QApplication>
#include <QDir>
#include <QStyleFactory>

namespace {

void Save(PanelFixture &shown, const QDir &folder, const QString &name)
{
    PanelFixture::Settle();
    QCoreApplication::processEvents();
    const QString path = folder.filePath(name + QStringLiteral(".png"));
    if (!shown.panel->grab().save(path))
        qWarning("cannot write %s", qPrintable(path));
}

void SaveEachTab(PanelFixture &shown, const QDir &folder, const QString &name)
{
    for (int tab = 0; tab < shown.Dock().count(); ++tab) {
        shown.Dock().setCurrentIndex(tab);
        Save(shown, folder, name + QLatin1Char('_') + shown.Dock().tabText(tab));
    }
}

/// The project as an animator might have it half way through.
void Work(PanelFixture &shown)
{
    shown.AddSeries("hair long name of a column", 12, { { 0, 1 }, { 2, 2 }, { 4, 3 }, { 6, 1 } });
    shown.AddSolid("ground");
    shown.Change(shown.layers[0], [](rostrum::Layer &layer) {
        layer.position.InsertKey({ 3, 25 }, { 320, 180 });
        layer.position.InsertKey({ 9, 25 }, { -12345, 99999 });
    });
    shown.Change(shown.layers[0], [&](rostrum::Layer &layer) { layer.parent = shown.layers[2]; });
}

void SaveAll(int set, const QDir &folder, const QString &name)
{
    QPalette palette = QApplication::palette();
    ApplyColorSet(palette, set, /*range=*/1.0);
    QApplication::setPalette(palette);
    PanelFixture shown(/*frames=*/60);
    Work(shown);
    shown.Open();
    Save(shown, folder, name + QStringLiteral("_empty"));
    shown.Poll();
    shown.ClickCell(2, 9);
    for (const QSize &size :
        { QSize(861, 134), QSize(200, 400), QSize(620, 500), QSize(1400, 900), QSize(861, 300) }) {
        shown.container->resize(size);
        PanelFixture::Settle();
        QCoreApplication::processEvents();
        SaveEachTab(shown, folder,
            QStringLiteral("%1_%2x%3").arg(name).arg(size.width()).arg(size.height()));
    }
    shown.container->resize(620, 700);
    int open = 0; // sections of the board
    for (TitleItem *title : shown.panel->findChildren<TitleItem *>()) {
        title->OnOpenClose();
        QCoreApplication::processEvents();
        Save(shown, folder, QStringLiteral("%1_open%2").arg(name).arg(++open));
    }
    shown.TakeLog();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QDir folder(arguments.value(1, QStringLiteral(".")));
    QApplication::setStyle(QStyleFactory::create(arguments.value(2, QStringLiteral("plastique"))));
    rostrum::Host::SetEndHandler([](const QByteArrayList &) {});
    SaveAll(/*set=*/1, folder, QStringLiteral("dark"));
    SaveAll(/*set=*/2, folder, QStringLiteral("light"));
    return 0;
}

#include "HelpCommands.h"

#include "window/Commands.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>
#include <QWidget>

namespace rostrum {
namespace {

/// The guide lies with the program where it is installed, and in the source folder of a build.
QString GuidePath()
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QStringList places{ program.filePath(
                                  QStringLiteral("../share/doc/rostrum/user-guide.md")),
        program.filePath(QStringLiteral("../../../docs/user-guide.md")) };
    for (const QString &place : places) {
        if (QFileInfo::exists(place))
            return QDir::cleanPath(place);
    }
    return {};
}

void ShowGuide(QWidget *window)
{
    const QString guide = GuidePath();
    if (guide.isEmpty() || !QDesktopServices::openUrl(QUrl::fromLocalFile(guide))) {
        QMessageBox::information(window, QStringLiteral("User Guide"),
            guide.isEmpty()
                ? QStringLiteral("The user guide is not installed. It is docs/user-guide.md in the "
                                 "source of the program.")
                : QStringLiteral("No program here shows it. The user guide is the file\n%1")
                      .arg(guide));
    }
}

void ShowAbout(QWidget *window)
{
    QMessageBox::about(window, QStringLiteral("About Rostrum"),
        QStringLiteral("<h3>Rostrum %1</h3><p>The stand-alone host of exposure sheets, named after "
                       "the camera that shot drawings frame by frame as the sheet told it to.</p>"
                       "<p>MIT licence. Qt %2.</p>")
            .arg(QStringLiteral(ROSTRUM_VERSION), QString::fromLatin1(qVersion())));
}

} // namespace

void FillHelpMenu(QMenu *menu, QWidget *window)
{
    AddEntry(
        menu, QStringLiteral("&User Guide"), Qt::Key_F1, window, [window] { ShowGuide(window); });
    AddEntry(menu, QStringLiteral("&About Rostrum"), window, [window] { ShowAbout(window); });
}

} // namespace rostrum

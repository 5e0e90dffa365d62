#include "RecoveryQuestions.h"

#include "core/ProjectFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

namespace rostrum {
namespace {

constexpr int kNamesTold = 5;

QString Tr(const char *text)
{
    return QCoreApplication::translate("RecoveryQuestions", text);
}

QString TimeOf(const QString &path)
{
    const QFileInfo file(path);
    return file.exists()
        ? QLocale().toString(file.lastModified(), QStringLiteral("yyyy-MM-dd HH:mm:ss"))
        : Tr("gone");
}

/// The names of a project's first items, so that a copy without a name is known again.
QString ContentOf(const QString &path)
{
    const LoadedProject loaded = LoadProject(path);
    if (!loaded.Ok())
        return Tr("It cannot be read.");
    const Project &project = loaded.project;
    QStringList names;
    for (ItemId item = project.NextInWalk(project.RootFolder()); item;
         item = project.NextInWalk(item))
        names << QString::fromUtf8(project.Find(item)->name);
    QString told = QStringList(names.mid(0, kNamesTold)).join(QLatin1String(", "));
    if (names.size() > kNamesTold)
        told += Tr(" and %1 more").arg(names.size() - kNamesTold);
    return names.isEmpty() ? Tr("It is empty.") : Tr("It holds %1.").arg(told);
}

} // namespace

Recovery AskToRecover(const QString &path, const QString &copy, QWidget *window)
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("Rostrum"),
        Tr("\"%1\" has changes that were never saved: the program ended before its time.")
            .arg(QFileInfo(path).fileName()),
        QMessageBox::NoButton, window);
    box.setInformativeText(Tr("%1\nThe file is of %2.\nThe changes are of %3.")
                               .arg(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()),
                                   TimeOf(path), TimeOf(copy)));
    QPushButton *recover = box.addButton(Tr("Recover"), QMessageBox::AcceptRole);
    QAbstractButton *asSaved = box.addButton(Tr("Open as Saved"), QMessageBox::DestructiveRole);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(recover);
    box.exec();
    if (box.clickedButton() == recover)
        return Recovery::Recover;
    return box.clickedButton() == asSaved ? Recovery::OpenAsSaved : Recovery::Cancel;
}

LeftWork AskAboutLeftWork(const QString &copy, QWidget *window)
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("Rostrum"),
        Tr("A project that was never saved is left from %1, when the program ended before its "
           "time.")
            .arg(TimeOf(copy)),
        QMessageBox::NoButton, window);
    box.setInformativeText(ContentOf(copy));
    QPushButton *recover = box.addButton(Tr("Recover"), QMessageBox::AcceptRole);
    QAbstractButton *remove = box.addButton(Tr("Remove It"), QMessageBox::DestructiveRole);
    box.addButton(Tr("Later"), QMessageBox::RejectRole);
    box.setDefaultButton(recover);
    box.exec();
    if (box.clickedButton() == recover)
        return LeftWork::Recover;
    return box.clickedButton() == remove ? LeftWork::Remove : LeftWork::Later;
}

bool AskToOpenAgain(const QString &path, const QString &who, QWidget *window)
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("Rostrum"),
        Tr("\"%1\" is open already (%2). Of what both save, only the later stays.")
            .arg(QFileInfo(path).fileName(), who),
        QMessageBox::NoButton, window);
    box.setInformativeText(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
    QAbstractButton *open = box.addButton(Tr("Open All the Same"), QMessageBox::AcceptRole);
    QPushButton *cancel = box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(cancel);
    box.exec();
    return box.clickedButton() == open;
}

} // namespace rostrum

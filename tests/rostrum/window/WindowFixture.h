// The window over a host of its own, with the user's places in a temporary folder, and a hand that
// chooses from its menus by mouse.
#pragma once

#include "DialogHand.h"
#include "testhost/SheetFixture.h"
#include "window/MainWindow.h"
#include "window/ProjectTree.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSpinBox>
#include <QTemporaryDir>

namespace testing {

class WindowFixture
{
public:
    WindowFixture() { Show(); }
    ~WindowFixture() { window.reset(); }

    /// A window as at another start of the program, over the same places.
    void Show(const QStringList &plugins = {})
    {
        window.reset();
        host.reset();
        host = std::make_unique<rostrum::Host>();
        window = std::make_unique<rostrum::MainWindow>(*host, Places());
        window->LoadPlugins(plugins);
        window->Start();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
    }
    rostrum::Places Places() const { return { Path("settings.ini"), Path("data") }; }

    QString Path(const char *name) const { return folder.filePath(QString::fromUtf8(name)); }
    rostrum::Session &Session() { return window->GetSession(); }
    const rostrum::Project &Project() { return Session().GetProject(); }
    rostrum::ProjectTree &Tree() { return *window->findChild<rostrum::ProjectTree *>(); }
    QString Message() const
    {
        return window->findChild<QLabel *>(QStringLiteral("lastMessage"))->text();
    }
    /// Of all items but the root folder, in the walk.
    QStringList ItemNames()
    {
        QStringList names;
        for (auto id = Project().NextInWalk(Project().RootFolder()); id;
             id = Project().NextInWalk(id))
            names << QString::fromUtf8(Project().Find(id)->name);
        return names;
    }
    /// Topmost first.
    QStringList LayerNames()
    {
        QStringList names;
        if (const rostrum::Composition *active = Session().ActiveComposition()) {
            for (const rostrum::LayerPtr &layer : active->layers)
                names << QString::fromUtf8(layer->name.isEmpty() && layer->source
                        ? Project().Find(layer->source)->name
                        : layer->name);
        }
        return names;
    }

    /// What window manager and user do after a dialog has closed.
    void Activate()
    {
        window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window.get());
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        Activate();
        QTest::keyClick(window.get(), key, modifiers);
    }

    /// "File/Open...", by mouse: the menus open one after the other.
    void Choose(const QString &way)
    {
        Activate();
        QStringList titles = way.split(QLatin1Char('/'));
        QAction *action = Find(window->menuBar(), titles.takeFirst());
        QTest::mouseClick(window->menuBar(), Qt::LeftButton, {},
            window->menuBar()->actionGeometry(action).center());
        QMenu *menu = action->menu();
        for (const QString &title : titles) {
            QTRY_VERIFY2(menu->isVisible(), qPrintable(way));
            action = Find(menu, title);
            QVERIFY2(action->isEnabled(), qPrintable(way + QStringLiteral(" is grey")));
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            menu = action->menu();
        }
    }
    /// The menu with its entries as they are now. Closes it again.
    QMenu *Look(const QString &title)
    {
        QMenu *menu = Find(window->menuBar(), title)->menu();
        emit menu->aboutToShow();
        return menu;
    }
    static QAction *Find(QWidget *menu, const QString &title)
    {
        for (QAction *action : menu->actions()) {
            if (action->text().remove(QLatin1Char('&')) == title)
                return action;
        }
        QTest::qFail(qPrintable(QStringLiteral("no entry \"%1\"").arg(title)), __FILE__, __LINE__);
        static QAction none(nullptr);
        return &none;
    }
    /// Makes a composition by hand, through the dialog as it stands.
    void MakeComposition()
    {
        const DialogHand hand([](QDialog &dialog) { ClickButton(dialog, QStringLiteral("OK")); });
        Choose(QStringLiteral("Composition/New Composition..."));
        QVERIFY(hand.Answered());
    }

    QTemporaryDir folder;
    std::unique_ptr<rostrum::Host> host;
    std::unique_ptr<rostrum::MainWindow> window;
};

/// Types a path into a file dialog and accepts it.
inline void TypePath(QDialog &dialog, const QString &path)
{
    auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    QVERIFY(name);
    // Wine gives the keyboard to the list of names that fit, and does not take it back.
    if (QGuiApplication::platformName() == QLatin1String("windows"))
        name->setCompleter(nullptr);
    name->setFocus();
    name->selectAll();
    testing::TypeText(name, path);
    QTest::keyClick(name, Qt::Key_Return);
}

/// Replaces what a field of a dialog holds.
inline void Type(QDialog &dialog, const char *field, const QString &text)
{
    auto *edit = dialog.findChild<QWidget *>(QLatin1String(field));
    QVERIFY2(edit, field);
    edit->setFocus();
    if (auto *box = qobject_cast<QSpinBox *>(edit))
        box->selectAll();
    else if (auto *combo = qobject_cast<QComboBox *>(edit))
        combo->lineEdit()->selectAll();
    else
        qobject_cast<QLineEdit *>(edit)->selectAll();
    TypeText(edit, text);
}

} // namespace testing

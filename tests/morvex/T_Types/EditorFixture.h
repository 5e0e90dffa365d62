// One editor of one variable in a window of its own, and what it said.
#pragma once

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"
#include "T_Types/T_Var.h"

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

/// A structure that answers what an editable combo box may offer, and counts how often.
class ListOwner : public T_Struct
{
public:
    QStringList GetEditList(QString *field) override
    {
        ++asked;
        lastAsked = field;
        return list;
    }

    QStringList list;
    int asked = 0;
    QString *lastAsked = nullptr;
};

struct EditorFixture
{
    /// @param items the list of a combo box, null for every other editor
    EditorFixture(quint32 type, void *field, uint gadget = TG_DEFAULT, QStringList *items = nullptr)
        : var(owner.AddVar(type, QStringLiteral("Name"), field, gadget))
    {
        var->mEnumList = items;
        T_Undo::Instance()->mEnabled = false;
        edit = new T_QtEdit(&window, var);
        QObject::connect(edit, &T_QtEdit::SignalValueChanged, [this](T_Var *changed) {
            ++signalCount;
            lastChanged = changed;
        });
        auto *column = new QVBoxLayout(&window);
        column->addWidget(edit);
        other = new QWidget(&window); // somewhere for the focus to go
        other->setFocusPolicy(Qt::StrongFocus);
        other->setMinimumHeight(10);
        column->addWidget(other);
        window.resize(420, 90);
        window.show();
        QApplication::setActiveWindow(&window);
        shown = QTest::qWaitForWindowActive(&window);
    }

    /// The editor's input of a kind; by name in the compound inputs.
    template <class Widget>
    Widget *Input(const char *name = nullptr) const
    {
        return edit->findChild<Widget *>(name ? QString::fromLatin1(name) : QString());
    }

    /// Puts a text in place of an input's own, key by key.
    void Type(QWidget *input, const char *text) const
    {
        input->setFocus();
        QTest::keyClick(input, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(input, QString::fromLatin1(text));
    }

    /// Signals since the last call.
    int TakeSignals()
    {
        const int count = signalCount;
        signalCount = 0;
        return count;
    }

    ListOwner owner;
    T_Var *var = nullptr;
    QWidget window; // deletes the editor before the variable goes
    T_QtEdit *edit = nullptr;
    QWidget *other = nullptr;
    bool shown = false;
    int signalCount = 0;
    T_Var *lastChanged = nullptr;
};

/// Counts what a window is asked to repaint. Settle first: what is due from before does not count.
class RepaintCounter : public QObject
{
public:
    RepaintCounter()
    {
        QApplication::setCursorFlashTime(0); // a blinking cursor paints on its own
        Settle();
        qApp->installEventFilter(this);
    }

    static void Settle()
    {
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::sendPostedEvents(nullptr, 0);
            QCoreApplication::processEvents();
        }
    }

    int Take()
    {
        Settle();
        const int taken = count;
        count = 0;
        return taken;
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::Paint || type == QEvent::UpdateRequest || type == QEvent::LayoutRequest)
            ++count;
        return false;
    }

private:
    int count = 0;
};

// One editor of one variable in a window of its own, and what it said.
#pragma once

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_Struct.h"
#include "T_Types/T_Undo.h"
#include "T_Types/T_Var.h"
#include "testing/RepaintCounter.h"

#include <QApplication>
#include <QTest>
#include <QTransform>
#include <QVBoxLayout>
#include <QVector2D>
#include <QVector3D>
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

/// A field for each type, one at a time, that holds no default.
struct AnyField
{
    void *For(quint32 type)
    {
        switch (type) {
        case TV_BOOL:
            return &flag;
        case TV_FLOAT:
            return &narrow;
        case TV_DOUBLE:
            return &wide;
        case TV_QSTRING:
            return &text;
        case TV_QVECTOR2D:
            return &two;
        case TV_QVECTOR3D:
            return &three;
        case TV_QTRANSFORM:
            return &transform;
        default:
            return whole;
        }
    }
    void Change()
    {
        flag = false;
        whole[0] = 0;
        narrow = 0.25f;
        wide = -7.5;
        text = QStringLiteral("run");
        two = QVector2D(2, 3);
        three = QVector3D(4, 5, 7);
        transform = QTransform::fromTranslate(6, 8);
    }

    bool flag = true;
    int whole[6] = { 1, 11, 22, 33, 44, 55 }; // room for the largest type without an input
    float narrow = 0.125f;
    double wide = 7.5;
    QString text = QStringLiteral("walk");
    QVector2D two{ 1.5f, 20000.0f };
    QVector3D three{ 4, 5, 6 };
    QTransform transform = QTransform::fromTranslate(3, 4);
};

/// The transform form writes a line at each showing.
inline void ExpectTrace()
{
    QTest::ignoreMessage(QtWarningMsg, "T_QtEdit VAL->IHM ");
}

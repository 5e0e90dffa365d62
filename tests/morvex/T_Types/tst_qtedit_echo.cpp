#include "EditorFixture.h"
#include "testing/TestMain.h"

#include <QSpinBox>

#include <memory>

/// Both directions of every type and gadget, with the signals counted: how often a new value that is
/// shown is told, and how often an edit is.
class TestQtEditEcho : public QObject
{
    Q_OBJECT

private slots:
    void init() { T_Undo::Instance()->Clear(); }
    void eachEditorTellsItsEditsAndKeepsItsEchoQuiet_data();
    void eachEditorTellsItsEditsAndKeepsItsEchoQuiet();
    void eachEditIsRecordedUnlessTheRecorderIsOff_data();
    void eachEditIsRecordedUnlessTheRecorderIsOff();

private:
    void AddEditors();
};

namespace {

/// An editor of any type on a field of its own.
struct AnyEditor
{
    AnyEditor(quint32 editedType, uint gadget) : type(editedType)
    {
        ExpectTraceOfTransform();
        const uint param = type == TV_STRING ? uint(sizeof field.whole) : gadget;
        fixture = std::make_unique<EditorFixture>(type, field.For(type), param, &items);
    }

    void ShowChange()
    {
        field.Change();
        ExpectTraceOfTransform();
        fixture->edit->ValToIhm();
    }

    /// One edit by one key; a line edit's is done when Return says so.
    void Edit(Qt::Key key) const
    {
        QWidget *input = fixture->Input<QSpinBox>("sb_Y");
        if (!input)
            input = fixture->edit->layout()->itemAt(fixture->edit->layout()->count() - 1)->widget();
        input->setFocus();
        QTest::keyClick(input, key);
        if (input->inherits("QLineEdit"))
            QTest::keyClick(input, Qt::Key_Return);
    }

    void ExpectTraceOfTransform() const
    {
        if (type == TV_QTRANSFORM)
            ExpectTrace();
    }

    const quint32 type;
    QStringList items{ QStringLiteral("png"), QStringLiteral("tga") };
    AnyField field;
    std::unique_ptr<EditorFixture> fixture;
};

} // namespace

/// From the value that AnyField::Change leaves, one key on.
void TestQtEditEcho::AddEditors()
{
    QTest::addColumn<quint32>("type");
    QTest::addColumn<uint>("gadget");
    QTest::addColumn<int>("toldWhenShown");
    QTest::addColumn<Qt::Key>("key"); // 0: a key edits nothing here
    QTest::addColumn<int>("toldWhenEdited");
    QTest::addColumn<QVariant>("edited");
    const auto row = [](const char *name, quint32 type, uint gadget, int toldWhenShown, int key,
                         int toldWhenEdited, const QVariant &edited) {
        QTest::newRow(name) << type << gadget << toldWhenShown << Qt::Key(key) << toldWhenEdited
                            << edited;
    };
    row("bool", TV_BOOL, TG_DEFAULT, 0, Qt::Key_Space, 1, true);
    row("int", TV_INT, TG_DEFAULT, 0, Qt::Key_Up, 1, 1);
    row("int, a narrow row", TV_INT, 1, 0, Qt::Key_Up, 1, 3); // 0 was shown as 2
    row("int without a range", TV_INT, 4, 0, Qt::Key_Up, 0, 0); // its box cannot leave -1
    row("slider", TV_INT, TG_SLIDER, 1, Qt::Key_Right, 1, 1);
    row("combo", TV_INT, TG_COMBO, 0, Qt::Key_Down, 1, 1);
    row("float", TV_FLOAT, TG_DEFAULT, 1, Qt::Key_Up, 1, 1.25f);
    row("double", TV_DOUBLE, TG_DEFAULT, 1, Qt::Key_Up, 1, -6.5);
    row("double without a range", TV_DOUBLE, 5, 0, Qt::Key_Up, 0, -7.5);
    row("button", TV_BOUTON, TG_DEFAULT, 0, Qt::Key_Space, 1, QVariant());
    row("text", TV_QSTRING, TG_DEFAULT, 0, Qt::Key_X, 1, QStringLiteral("runx"));
    row("editable combo", TV_QSTRING, TG_EDITCOMBO, 1, Qt::Key_X, 1, QStringLiteral("runx"));
    row("vector of two", TV_QVECTOR2D, TG_DEFAULT, 0, Qt::Key_Up, 1, QVector2D(2, 13));
    row("vector of three", TV_QVECTOR3D, TG_DEFAULT, 0, Qt::Key_Up, 1, QVector3D(4, 15, 7));
    row("transform", TV_QTRANSFORM, TG_DEFAULT, 0, Qt::Key_Up, 1, QTransform::fromTranslate(6, 18));
}

void TestQtEditEcho::eachEditorTellsItsEditsAndKeepsItsEchoQuiet_data()
{
    AddEditors();
    QTest::newRow("colour, edited by a dialog")
        << quint32(TV_COLOR) << 4U << 0 << Qt::Key(0) << 0 << QVariant();
    for (const quint32 type : { TV_STRING, TV_SHORT, TV_SXY, TV_CHAR, TV_QPOINT, TV_LINKED_POINT })
        QTest::newRow(T_TagFromType(type))
            << type << uint(TG_DEFAULT) << 0 << Qt::Key(0) << 0 << QVariant();
}

void TestQtEditEcho::eachEditorTellsItsEditsAndKeepsItsEchoQuiet()
{
    QFETCH(quint32, type);
    QFETCH(uint, gadget);
    QFETCH(Qt::Key, key);
    QFETCH(QVariant, edited);
    AnyEditor editor(type, gadget);
    QVERIFY(editor.fixture->shown);
    QCOMPARE(editor.fixture->signalCount, 0);

    editor.ShowChange();
    QTEST(editor.fixture->TakeSignals(), "toldWhenShown");
    editor.ExpectTraceOfTransform();
    editor.fixture->edit->ValToIhm(); // nothing new
    QCOMPARE(editor.fixture->TakeSignals(), 0);
    if (!key)
        return;

    editor.Edit(key);
    QTEST(editor.fixture->TakeSignals(), "toldWhenEdited");
    QCOMPARE(editor.fixture->var->GetValue(), edited);
    editor.ExpectTraceOfTransform();
    editor.fixture->edit->ValToIhm(); // the edit came from there
    QCOMPARE(editor.fixture->TakeSignals(), 0);
    QCOMPARE(editor.fixture->var->GetValue(), edited);
}

void TestQtEditEcho::eachEditIsRecordedUnlessTheRecorderIsOff_data()
{
    AddEditors();
}

/// The panel switches the recorder off; what the user does then changes the fields all the same.
void TestQtEditEcho::eachEditIsRecordedUnlessTheRecorderIsOff()
{
    QFETCH(quint32, type);
    QFETCH(uint, gadget);
    QFETCH(Qt::Key, key);
    QFETCH(QVariant, edited);
    const bool stores = type != TV_BOUTON && gadget != 4 && gadget != 5;
    for (const bool enabled : { true, false }) {
        AnyEditor editor(type, gadget);
        editor.ShowChange();
        T_Undo::Instance()->Clear();
        T_Undo::SetEnabled(enabled);
        editor.Edit(key);
        T_Undo::SetEnabled(false);
        QCOMPARE(editor.fixture->var->GetValue(), edited);
        QCOMPARE(T_Undo::Instance()->mRecords.size(), enabled && stores ? 1 : 0);
    }
}

VN_TEST_MAIN(TestQtEditEcho)

#include "tst_qtedit_echo.moc"

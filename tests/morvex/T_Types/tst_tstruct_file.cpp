#include "TypedFixtures.h"

#include "T_Types/T_Registry.h"
#include "support/vnMessage.h"
#include "testing/TestMain.h"

#include <QFile>
#include <QTransform>
#include <QVector2D>

#include <stdexcept>

namespace {

/// The dashboard of the sample file: one child of each sort, the variables in its order.
class Doc : public T_Struct
{
public:
    Doc()
    {
        SetName(QStringLiteral("Dashboard"));
        AddVar(TV_ONGLET, QStringLiteral("Layer"), nullptr, TG_TAB); // leaves no trace in the file
        AddQString(&name, QStringLiteral("Name"), TG_DEFAULT);
        AddInt(&posX, QStringLiteral("Pos. X"), TG_DEFAULT);
        AddBool(&keyPos, QStringLiteral("Key Pos"), TG_DEFAULT);
        AddButton(&newCol, QStringLiteral("New Col"));
        AddVar(TV_FLOAT, QStringLiteral("Gain"), &gain, TG_DEFAULT);
        AddVar(TV_QVECTOR2D, QStringLiteral("Origin"), &origin, TG_DEFAULT);
        AddVar(TV_QTRANSFORM, QStringLiteral("Frame"), &frame, TG_DEFAULT);
        markTab = new T_Tab(TV_INT, QStringLiteral("Marks"), reinterpret_cast<void **>(&marks));
        AddChild(markTab);
        part = new T_Struct;
        part->SetName(QStringLiteral("Part"));
        part->AddVar(TV_COLOR, QStringLiteral("Tint"), &tint, 4);
        AddChild(part);
    }
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Doc) || T_Struct::IsA(kind);
    }
    void Fill()
    {
        name = QStringLiteral("walk");
        posX = 120;
        gain = 1.5F;
        origin = QVector2D(10, 20);
        frame = QTransform::fromTranslate(25, -3);
        markTab->SetSize(3);
        marks[0] = 1;
        marks[1] = 2;
        marks[2] = 5;
        tint = 0xFFFF0000;
    }

    QString name;
    int posX = 0;
    bool keyPos = false;
    bool newCol = false;
    float gain = 0;
    QVector2D origin;
    QTransform frame;
    int *marks = nullptr;
    T_Tab *markTab = nullptr;
    T_Struct *part = nullptr;
    quint32 tint = 0;
};

/// A class that files may create.
class Wing : public T_Struct
{
public:
    Wing() { AddInt(&span, QStringLiteral("Span"), TG_DEFAULT); }
    bool IsA(const std::type_info &kind) const override
    {
        return kind == typeid(Wing) || T_Struct::IsA(kind);
    }
    int span = 0;
};

T_Declare(Wing);

QByteArray DashboardFile()
{
    QFile file(QStringLiteral(VN_TEST_DATA "/t_types/dashboard.txt"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// "walk" for a text of one word, and so on: what a body sets, in one line.
QString Shown(const Doc &doc)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(doc.name)
        .arg(doc.posX)
        .arg(double(doc.gain))
        .arg(doc.markTab->mCount);
}

/// A structure with more nested ones inside, as text.
QByteArray Nested(int depth, const QByteArray &innermost)
{
    QByteArray body;
    for (int i = 0; i < depth; ++i)
        body += "TS_T_Struct\nlevel\n";
    body += innermost;
    for (int i = 0; i < depth; ++i)
        body += "TS_END\n";
    return body;
}

int Depth(T_Struct &root)
{
    T_Struct *inner = root.GetStruct(0);
    return inner ? 1 + Depth(*inner) : 0;
}

QByteArray WingsNamed(int first, int last)
{
    QByteArray body;
    for (int i = first; i <= last; ++i)
        body += "TS_Wing\nw" + QByteArray::number(i) + "\nTS_END\n";
    return body;
}

struct Fatal : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// The text that a reading ends the process with, empty when it does not.
QByteArray FatalText(T_Struct &root, const QByteArray &body)
{
    SetFatalHandler([](const char *boxText) { throw Fatal(boxText); });
    QByteArray text;
    try {
        typed::ReadBody(root, body);
    } catch (const Fatal &fatal) {
        text = fatal.what();
    }
    SetFatalHandler(nullptr);
    return text;
}

constexpr char kNotFoundX[] = "-ERR- T_Struct::GetVar[%s] NotFound \"x\"";
constexpr char kUnknownItem[] = "-ERR- .........\n";

} // namespace

class TestTStructFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theSampleFileIsWhatItsDashboardWrites();
    void theSampleFileReadsAndWritesBackByteForByte();
    void anEmptyStructureWritesThreeLines();
    void withoutAStreamNothingIsWrittenOrRead();
    void aChildWithoutTheSaveFlagIsLeftOut();
    void aStreamAtItsEndTouchesNothing();
    void readStopsBehindItsEndLine();
    void theOrderOfVariablesDoesNotMatter();
    void whatTheFileDoesNotNameKeepsItsValue();
    void anUnknownVariableIsWarnedOfAndSwallowed();
    void aKnownNameOfAnotherTypeKeepsItsValue();
    void anUnknownTypeMatchesByNameAlone();
    void anUnknownArrayIsSwallowedInSilence();
    void anArrayOfAnotherTypesTagIsReadWithItsOwnType();
    void aStructureThatIsThereIsReadWhateverItsClass();
    void aNewStructureOfARegisteredClassIsMadeAndRead();
    void aNewStructureOfAnUnknownClassEndsTheProgram();
    void aSecondStructureOfANameThatThisReadingMadeIsMadeAgain();
    void aSecondStructureOfANameThatWasThereIsReadAgain();
    void theNamesThatAReadingMadeAreItsOwn();
    void anUnknownItemWarnsUntilATagFitsAgain();
    void aFileMayEndAnywhere_data();
    void aFileMayEndAnywhere();
    void oneHundredNewNamesAreTheMost();
    void aNameMadeTwiceCountsOnce();
    void namesAreComparedWhole();
    void theHundredAndFirstNewNameEndsTheProgram();
    void structuresNestToAHundredLevels();
    void aDeeperStructureIsAnUnknownItem();
    void aFatalReadingLeavesTheNextOneItsHundredLevels();
    void namesAndValuesOf998CharactersFitALine();
    void aTagLongerThanItsBufferCountsAsTwoLines();
    void blankLinesAreEmptyNamesAndValues();
    void aZeroByteEndsItsLine();
    void textIsLatin1();
};

void TestTStructFile::init()
{
    typed::FreshUndo();
}

void TestTStructFile::theSampleFileIsWhatItsDashboardWrites()
{
    Doc doc;
    doc.Fill();
    QCOMPARE(typed::Written(doc), DashboardFile());
}

void TestTStructFile::theSampleFileReadsAndWritesBackByteForByte()
{
    Doc doc;
    QCOMPARE(typed::ReadWhole(doc, DashboardFile()), "");
    QCOMPARE(doc.name, QStringLiteral("walk"));
    QCOMPARE(doc.posX, 120);
    QVERIFY(!doc.keyPos);
    QCOMPARE(doc.gain, 1.5F);
    QCOMPARE(doc.origin, QVector2D(10, 20));
    QVERIFY(doc.frame == QTransform::fromTranslate(25, -3));
    QCOMPARE(doc.markTab->mCount, 3);
    QCOMPARE(QVector<int>({ doc.marks[0], doc.marks[1], doc.marks[2] }), QVector<int>({ 1, 2, 5 }));
    QCOMPARE(doc.tint, quint32(0xFFFF0000));
    QCOMPARE(typed::Written(doc), DashboardFile());
}

void TestTStructFile::anEmptyStructureWritesThreeLines()
{
    T_Struct root;
    root.SetName(QStringLiteral("Empty one"));
    QCOMPARE(typed::Written(root), "TS_T_Struct\nEmpty one\nTS_END\n");
}

void TestTStructFile::withoutAStreamNothingIsWrittenOrRead()
{
    QCOMPARE(T_WriteStream, nullptr);
    QCOMPARE(T_ReadStream, nullptr);
    Doc doc;
    doc.Write();
    doc.Read(true);
    doc.markTab->Read(true);
    QCOMPARE(doc.posX, 0);
}

void TestTStructFile::aChildWithoutTheSaveFlagIsLeftOut()
{
    T_Struct root;
    int a = 0;
    int b = 0;
    root.AddInt(&a, QStringLiteral("a"), TG_DEFAULT);
    root.AddInt(&b, QStringLiteral("b"), TG_DEFAULT);
    root.GetVar(QStringLiteral("a"), TV_INT)->mFlags = quint8(~T_FLAG_SAVE);
    QCOMPARE(typed::Written(root), "TS_T_Struct\n?\nTV_INT\nb\n0\nTS_END\n");
}

void TestTStructFile::aStreamAtItsEndTouchesNothing()
{
    Doc doc;
    doc.Fill();
    typed::ReadBody(doc, "");
    QCOMPARE(typed::Written(doc), DashboardFile());
}

void TestTStructFile::readStopsBehindItsEndLine()
{
    Doc doc;
    QCOMPARE(typed::ReadBody(doc, "TV_INT\nPos. X\n7\nTS_END\nTV_INT\nPos. X\n8\n"),
        "TV_INT\nPos. X\n8\n");
    QCOMPARE(doc.posX, 7);
    QCOMPARE(typed::ReadBody(doc, "TV_INT\nPos. X\n9\nTS_END\n", /*apply=*/false), "");
    QCOMPARE(doc.posX, 9); // a structure does not look at it
}

void TestTStructFile::theOrderOfVariablesDoesNotMatter()
{
    Doc doc;
    typed::ReadBody(
        doc, "TT_INT\nMarks\n1\n4\nTV_FLOAT\nGain\n2.5\nTV_QSTRING\nName\nrun\nTS_END\n");
    QCOMPARE(Shown(doc), QStringLiteral("run 0 2.5 1"));
}

void TestTStructFile::whatTheFileDoesNotNameKeepsItsValue()
{
    Doc doc;
    doc.Fill();
    typed::ReadBody(doc, "TV_INT\nPos. X\n7\nTS_END\n");
    QCOMPARE(Shown(doc), QStringLiteral("walk 7 1.5 3"));
}

void TestTStructFile::anUnknownVariableIsWarnedOfAndSwallowed()
{
    Doc doc;
    QTest::ignoreMessage(QtWarningMsg, kNotFoundX);
    typed::ReadBody(doc, "TV_INT\nx\nTS_END\nTV_INT\nPos. X\n7\n"); // its value looks like an end
    QCOMPARE(doc.posX, 7);
}

void TestTStructFile::aKnownNameOfAnotherTypeKeepsItsValue()
{
    Doc doc;
    doc.Fill();
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"Pos. X\"");
    typed::ReadBody(doc, "TV_FLOAT\nPos. X\n7\nTV_QSTRING\nName\nrun\n");
    QCOMPARE(Shown(doc), QStringLiteral("run 120 1.5 3"));
}

void TestTStructFile::anUnknownTypeMatchesByNameAlone()
{
    Doc doc;
    typed::ReadBody(doc, "TV_int\nPos. X\n7\nTV_LAST\nGain\n2.5\nTV_\nName\nrun\n");
    QCOMPARE(Shown(doc), QStringLiteral("run 7 2.5 0"));
}

void TestTStructFile::anUnknownArrayIsSwallowedInSilence()
{
    Doc doc;
    typed::ReadBody(doc, "TT_INT\nx\n3\nTS_END\nTV_INT\nPos. X\nTV_INT\nPos. X\n7\n");
    QCOMPARE(Shown(doc), QStringLiteral(" 7 0 0"));
}

void TestTStructFile::anArrayOfAnotherTypesTagIsReadWithItsOwnType()
{
    Doc doc;
    typed::ReadBody(doc, "TT_QTRANSFORM\nMarks\n2\n11.9\n12 13\nTS_END\n");
    QCOMPARE(doc.markTab->mCount, 2);
    QCOMPARE(QVector<int>({ doc.marks[0], doc.marks[1] }), QVector<int>({ 11, 12 }));
}

void TestTStructFile::aStructureThatIsThereIsReadWhateverItsClass()
{
    Doc doc;
    typed::ReadBody(doc, "TS_Never heard of\nPart\nTV_COLOR\nTint\n77\nTS_END\nTS_END\n");
    QCOMPARE(doc.tint, quint32(77));
    QCOMPARE(doc.CountOf(typeid(T_Struct)), 1);
}

void TestTStructFile::aNewStructureOfARegisteredClassIsMadeAndRead()
{
    Doc doc;
    typed::ReadBody(doc, "TS_Wing\nleft\nTV_INT\nSpan\n9\nTS_END\nTV_INT\nPos. X\n7\nTS_END\n");
    QCOMPARE(doc.posX, 7);
    QCOMPARE(doc.CountOf(typeid(T_Struct)), 2);
    auto *wing = static_cast<Wing *>(doc.GetStruct(1));
    QVERIFY(wing->IsExactly(typeid(Wing)));
    QCOMPARE(wing->GetName(), QStringLiteral("left"));
    QCOMPARE(wing->mNext, nullptr);
    QCOMPARE(wing->span, 9);
}

void TestTStructFile::aNewStructureOfAnUnknownClassEndsTheProgram()
{
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--unknown-class"));
    QCOMPARE(child.exitCode, 1);
    QCOMPARE(child.err, "\n-ERR- T_Struct::AddStruct Fin tail\n\n");

    Doc doc;
    QCOMPARE(FatalText(doc, "TS_Doc\nDoc\nTS_END\n"), // a class that nobody registered
        "\n-ERR- T_Struct::AddStruct Doc Doc\n\n");
    QCOMPARE(FatalText(doc, "TS_\n\n"), "\n-ERR- T_Struct::AddStruct  \n\n");
    QCOMPARE(FatalText(doc, "TS_end\nx\n"), "\n-ERR- T_Struct::AddStruct end x\n\n");
}

void TestTStructFile::aSecondStructureOfANameThatThisReadingMadeIsMadeAgain()
{
    Doc doc;
    typed::ReadBody(doc,
        "TS_Wing\nleft\nTV_INT\nSpan\n9\nTS_END\n"
        "TS_Wing\nleft\nTV_INT\nSpan\n8\nTS_END\n"
        "TS_Wing\nleft\nTS_END\n");
    QCOMPARE(doc.CountOf(typeid(Wing)), 3);
    QCOMPARE(static_cast<Wing *>(doc.GetStruct(1))->span, 9);
    QCOMPARE(static_cast<Wing *>(doc.GetStruct(2))->span, 8);
    QCOMPARE(static_cast<Wing *>(doc.GetStruct(3))->span, 0);
}

void TestTStructFile::aSecondStructureOfANameThatWasThereIsReadAgain()
{
    Doc doc;
    typed::ReadBody(doc,
        "TS_T_Struct\nPart\nTV_COLOR\nTint\n77\nTS_END\n"
        "TS_T_Struct\nPart\nTV_COLOR\nTint\n78\nTS_END\n");
    QCOMPARE(doc.CountOf(typeid(T_Struct)), 1);
    QCOMPARE(doc.tint, quint32(78));
}

void TestTStructFile::theNamesThatAReadingMadeAreItsOwn()
{
    Doc doc;
    const QByteArray body = "TS_Wing\nleft\nTS_Wing\nleft\nTV_INT\nSpan\n5\nTS_END\nTS_END\n";
    typed::ReadBody(doc, body);
    typed::ReadBody(doc, body); // a later reading finds both that the first one made
    QCOMPARE(doc.CountOf(typeid(Wing)), 1);
    auto *outer = static_cast<Wing *>(doc.GetStruct(1));
    QCOMPARE(outer->CountOf(typeid(Wing)), 1);
    QCOMPARE(static_cast<Wing *>(outer->GetStruct(0))->span, 5);
}

void TestTStructFile::anUnknownItemWarnsUntilATagFitsAgain()
{
    Doc doc;
    for (int i = 0; i < 3; ++i)
        QTest::ignoreMessage(QtWarningMsg, kUnknownItem);
    typed::ReadBody(doc,
        "XX_INT\nPos. X\n" // these two are dropped
        "33\ntv_int\n" // its value is taken for a tag
        "\nTV\n"
        "TV_INT\nPos. X\n7\nTS_END\n");
    QCOMPARE(doc.posX, 7);
}

void TestTStructFile::aFileMayEndAnywhere_data()
{
    QTest::addColumn<int>("length");
    const int size = DashboardFile().size();
    for (int length = 0; length <= size; length += 7)
        QTest::addRow("%d of %d bytes", length, size) << length;
    QTest::addRow("all but the last newline") << size - 1;
}

void TestTStructFile::aFileMayEndAnywhere()
{
    QFETCH(int, length);
    const QByteArray whole = DashboardFile();
    // The same cut in the middle of a name makes an unknown one; those warnings are beside the
    // point.
    Doc doc;
    const QtMessageHandler before
        = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QByteArray left = typed::ReadWhole(doc, whole.left(length));
    qInstallMessageHandler(before);

    QCOMPARE(left, "");
    const int valueOfName = whole.indexOf("walk") + 5;
    QCOMPARE(doc.name == QStringLiteral("walk"), length >= valueOfName - 1);
    if (length >= whole.size() - 1)
        QCOMPARE(typed::Written(doc), whole);
}

void TestTStructFile::oneHundredNewNamesAreTheMost()
{
    Doc doc;
    typed::ReadBody(doc, WingsNamed(1, 100));
    QCOMPARE(doc.CountOf(typeid(Wing)), 100);
    QCOMPARE(FatalText(doc, WingsNamed(1, 100) + WingsNamed(101, 200)), ""); // the rest is known

    Doc other;
    QCOMPARE(FatalText(other, WingsNamed(1, 101)), "\n-ERR- Read:T_TABNAMEMAX\n\n");
    QCOMPARE(other.CountOf(typeid(Wing)), 101); // made, and then found to be too many
}

void TestTStructFile::aNameMadeTwiceCountsOnce()
{
    Doc doc;
    typed::ReadBody(doc, WingsNamed(1, 100) + WingsNamed(1, 100) + WingsNamed(50, 60));
    QCOMPARE(doc.CountOf(typeid(Wing)), 211);
}

void TestTStructFile::namesAreComparedWhole()
{
    Doc doc;
    const QByteArray twenty(20, 'n');
    const QByteArray one = "TS_Wing\n" + twenty + "A\nTS_END\n";
    const QByteArray two = "TS_Wing\n" + twenty + "B\nTS_END\n";
    typed::ReadBody(doc, one + two); // equal in their first 20 characters
    typed::ReadBody(doc, two + one + two);
    QCOMPARE(doc.CountOf(typeid(Wing)), 2);
    QCOMPARE(doc.GetStruct(1)->GetName(), QString::fromLatin1(twenty + 'A'));
    QCOMPARE(doc.GetStruct(2)->GetName(), QString::fromLatin1(twenty + 'B'));
}

void TestTStructFile::theHundredAndFirstNewNameEndsTheProgram()
{
    const typed::ChildResult child = typed::RunChild(QStringLiteral("--names"));
    QCOMPARE(child.exitCode, 1);
    QCOMPARE(child.err, "\n-ERR- Read:T_TABNAMEMAX\n\n");
}

void TestTStructFile::structuresNestToAHundredLevels()
{
    T_Struct root;
    QCOMPARE(typed::ReadBody(root, Nested(100, "") + "TS_END\nrest\n"), "rest\n");
    QCOMPARE(Depth(root), 100);
}

void TestTStructFile::aDeeperStructureIsAnUnknownItem()
{
    T_Struct root;
    // Its header is dropped, and its end line then ends the hundredth level.
    QTest::ignoreMessage(QtWarningMsg, kUnknownItem);
    QCOMPARE(typed::ReadBody(root, Nested(101, "")), "");
    QCOMPARE(Depth(root), 100);
}

void TestTStructFile::aFatalReadingLeavesTheNextOneItsHundredLevels()
{
    T_Struct root;
    QVERIFY(!FatalText(root, Nested(60, "TS_Fin\nx\n")).isEmpty());
    T_Struct other;
    typed::ReadBody(other, Nested(100, ""));
    QCOMPARE(Depth(other), 100);
}

void TestTStructFile::namesAndValuesOf998CharactersFitALine()
{
    T_Struct root;
    QString text;
    const QByteArray name(998, 'n');
    root.AddQString(&text, QString::fromLatin1(name), TG_DEFAULT);
    QCOMPARE(
        typed::ReadBody(root, "TV_QSTRING\n" + name + "\n" + QByteArray(998, 'v') + "\nTS_END\n"),
        "");
    QCOMPARE(text, QString(998, QLatin1Char('v')));

    // One more, and the newline alone is the next line.
    QTest::ignoreMessage(QtWarningMsg, kUnknownItem);
    QCOMPARE(typed::ReadBody(root,
                 "TV_QSTRING\n" + name + "\n" + QByteArray(999, 'w') + "\nTS_END\nTS_END\nrest\n"),
        "rest\n");
    QCOMPARE(text, QString(999, QLatin1Char('w')));
}

void TestTStructFile::aTagLongerThanItsBufferCountsAsTwoLines()
{
    Doc doc;
    // 98 characters fit with their newline; of more the first 99 are the tag, the rest the name.
    const QByteArray spaces(98 - 6, ' ');
    QTest::ignoreMessage(QtWarningMsg, "-ERR- T_Struct::GetVar[%s] NotFound \"Pos. Y\"");
    typed::ReadBody(doc, "TV_INT" + spaces + "\nPos. Y\n6\nTV_INT" + spaces + " Pos. X\n7\n");
    QCOMPARE(doc.posX, 7);
}

void TestTStructFile::blankLinesAreEmptyNamesAndValues()
{
    T_Struct root;
    QString text = QStringLiteral("old");
    root.AddQString(&text, QString(), TG_DEFAULT);
    QCOMPARE(typed::Written(root), "TS_T_Struct\n?\nTV_QSTRING\n\nold\nTS_END\n");
    typed::ReadBody(root, "TV_QSTRING\n\n\nTS_END\n");
    QCOMPARE(text, QString());
}

void TestTStructFile::aZeroByteEndsItsLine()
{
    Doc doc;
    doc.Fill();
    typed::ReadBody(
        doc, QByteArray("TV_QSTRING\0junk\nName\0junk\nru\0n\nTV_INT\nPos. X\n7\n", 48));
    QCOMPARE(Shown(doc), QStringLiteral("ru 7 1.5 3"));
}

void TestTStructFile::textIsLatin1()
{
    T_Struct root;
    QString text = QString::fromUtf8("caf\xC3\xA9");
    root.SetName(QString::fromUtf8("\xC3\xA9tude"));
    root.AddQString(&text,
        QString::fromUtf8("pi\xC3\xA8"
                          "ce"),
        TG_DEFAULT);
    const QByteArray whole = typed::Written(root);
    QCOMPARE(whole,
        "TS_T_Struct\n\xE9tude\nTV_QSTRING\npi\xE8"
        "ce\ncaf\xE9\nTS_END\n");
    text.clear();
    typed::ReadWhole(root, whole);
    QCOMPARE(text, QString::fromUtf8("caf\xC3\xA9"));
}

namespace {

int RunAsChild(const QByteArray &mode)
{
    Doc doc;
    if (mode == "--unknown-class")
        typed::ReadBody(doc, "TV_INT\nPos. X\n7\nTS_Fin\ntail\nTS_END\n");
    if (mode == "--names")
        typed::ReadBody(doc, WingsNamed(1, 101));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrncmp(argv[1], "--", 2) == 0)
        return RunAsChild(argv[1]);
    QApplication application(argc, argv);
    TestTStructFile tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_tstruct_file.moc"

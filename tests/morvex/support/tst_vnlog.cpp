#include "support/vnLog.h"
#include "support/vnMessage.h"
#include "testing/TestMain.h"

#include <QDir>
#include <QFile>

#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

/// Starts each test from an empty log; the log itself is one for the process.
class TestVnLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aNewLogHoldsTheEndMarkAlone();
    void anAddedTextStandsOnALineOfItsOwn();
    void aTextOf1000CharactersGetsTheLineBreakAndOneOf1001DoesNot();
    void aNewlineInsideIsStoredAsCarriageReturnAndNewline();
    void aCarriageReturnThatIsThereIsKept();
    void theFirstGrowthGoesFrom1000To2000Bytes();
    void aLongMessageGrowsTheBufferByItsLengthAnd100();
    void nearTheLimitTheOldestTextGoes_data();
    void nearTheLimitTheOldestTextGoes();
    void aMessageAsLongAsTheWholeTextIsRefused();
    void aMessageBeyondTheLimitIsRefused();
    void theFileSwitchWritesEveryTextAsItCame();
    void theMemorySwitchOffKeepsNothingAndStillWritesTheFile();
    void aDebugFileThatCannotBeOpenedIsIgnored();
    void theErrorLinesHaveTheirFixedForm();
    void clearGivesTheBufferItsFirstSizeBack();
    void infoShowsItsBoxAndReturns();
    void fatalShowsItsTextAndEndsWithStatusOne();

private:
    vnLog *const log = vnLog::Instance();
};

namespace {

/// Fills the log with lines of 98 characters up to `used` bytes exactly.
void FillTo(vnLog *log, int used)
{
    while (used - log->Used() > 300)
        log->Add(QByteArray(98, 'f').constData());
    log->Add(QByteArray(used - log->Used() - 2, 'f').constData());
}

} // namespace

void TestVnLog::init()
{
    log->Clear();
}

void TestVnLog::aNewLogHoldsTheEndMarkAlone()
{
    QCOMPARE(log->Text(), "<END>");
    QCOMPARE(log->Used(), 5);
    QCOMPARE(log->Capacity(), 1000);
}

void TestVnLog::anAddedTextStandsOnALineOfItsOwn()
{
    QCOMPARE(log->Add("abc"), 1);
    QCOMPARE(log->Text(), "\r\nabc<END>");
    QCOMPARE(log->Used(), 10);
}

void TestVnLog::aTextOf1000CharactersGetsTheLineBreakAndOneOf1001DoesNot()
{
    const QByteArray text(1000, 'x');
    QCOMPARE(log->Add(text.constData()), 1);
    QCOMPARE(QByteArray(log->Text()), "\r\n" + text + "<END>");

    log->Clear();
    QCOMPARE(log->Add((text + 'y').constData()), 1);
    QCOMPARE(QByteArray(log->Text()), text + "y<END>");
}

void TestVnLog::aNewlineInsideIsStoredAsCarriageReturnAndNewline()
{
    log->Add("a\nb");
    QCOMPARE(log->Text(), "\r\na\r\nb<END>");
}

void TestVnLog::aCarriageReturnThatIsThereIsKept()
{
    log->Add("a\r\nb");
    QCOMPARE(log->Text(), "\r\na\r\r\nb<END>");
}

void TestVnLog::theFirstGrowthGoesFrom1000To2000Bytes()
{
    FillTo(log, 990);
    QCOMPARE(log->Capacity(), 1000);
    log->Add("a short one");
    QCOMPARE(log->Capacity(), 2000);
    QVERIFY(QByteArray(log->Text()).endsWith("\r\na short one<END>"));
}

void TestVnLog::aLongMessageGrowsTheBufferByItsLengthAnd100()
{
    log->Add(QByteArray(5000, 'x').constData());
    QCOMPARE(log->Capacity(), 1000 + 5100);
    QCOMPARE(log->Used(), 5005);
}

void TestVnLog::nearTheLimitTheOldestTextGoes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("dropped");
    QTest::newRow("10 characters drop the first 400 bytes") << 10 << 400;
    QTest::newRow("1000 characters drop the first 1003 bytes") << 1000 << 1003;
}

void TestVnLog::nearTheLimitTheOldestTextGoes()
{
    QFETCH(int, length);
    QFETCH(int, dropped);
    FillTo(log, 29995);
    const QByteArray before = QByteArray(log->Text()).chopped(5);
    const QByteArray text(length, 'n');

    QCOMPARE(log->Add(text.constData()), 1);

    QCOMPARE(QByteArray(log->Text()), before.mid(dropped) + "\r\n" + text + "<END>");
    QCOMPARE(log->Used(), 29995 - dropped + length + 2);
    QVERIFY(log->Capacity() <= 31000);
}

void TestVnLog::aMessageAsLongAsTheWholeTextIsRefused()
{
    FillTo(log, 15000);
    const QByteArray before(log->Text());
    QCOMPARE(log->Add(QByteArray(15000, 'n').constData()), 0);
    QCOMPARE(QByteArray(log->Text()), before);
}

void TestVnLog::aMessageBeyondTheLimitIsRefused()
{
    log->Add("kept");
    QCOMPARE(log->Add(QByteArray(100000, 'n').constData()), 0);
    QCOMPARE(log->Text(), "\r\nkept<END>");
}

namespace {

/// The debug file stands in the working folder outside Windows; each use gets a folder of its own.
class DebugFolder
{
public:
    DebugFolder() { QDir::setCurrent(folder.path()); }
    ~DebugFolder()
    {
        QFile::remove(path); // on Windows it stands in the root
        QDir().rmdir(path);
        vnLog::Instance()->SetFileSwitch(false);
        vnLog::Instance()->SetMemorySwitch(true);
        QDir::setCurrent(before);
    }
    QByteArray Written() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly | QIODevice::Text) ? file.readAll()
                                                                : QByteArray("no file");
    }

private:
    QString before = QDir::currentPath();
    QTemporaryDir folder;

public:
    const QString path = QDir(folder.path()).absoluteFilePath(QStringLiteral("C:\\VN_DEBUG.log"));
};

} // namespace

void TestVnLog::theFileSwitchWritesEveryTextAsItCame()
{
    const DebugFolder debug;
    log->Add("before the switch");
    log->SetFileSwitch(true);
    log->Add("a\nb");
    log->Clear();
    QCOMPARE(debug.Written(), "a\nb\n=== CLEAR LOG ===\n");
}

void TestVnLog::theMemorySwitchOffKeepsNothingAndStillWritesTheFile()
{
    const DebugFolder debug;
    log->SetFileSwitch(true);
    log->SetMemorySwitch(false);
    QCOMPARE(log->Add("only on disk"), 0);
    QCOMPARE(log->Text(), "<END>");
    QCOMPARE(debug.Written(), "only on disk\n");
}

void TestVnLog::aDebugFileThatCannotBeOpenedIsIgnored()
{
    const DebugFolder debug;
    QVERIFY(QDir().mkdir(debug.path));
    log->SetFileSwitch(true);
    QCOMPARE(log->Add("abc"), 1);
    QCOMPARE(log->Text(), "\r\nabc<END>");
}

void TestVnLog::theErrorLinesHaveTheirFixedForm()
{
    vnLogErrorLine('I', 17, "morvex/vnAE/vipLi.cpp");
    vnLogErrorLine('B', 9, QByteArray(400, 'p').constData());
    const QByteArray text(log->Text());
    QVERIFY(
        text.startsWith("\r\n-ERR I- line 17, file(morvex/vnAE/vipLi.cpp)\r\n-ERR B- line 9, "));
    QVERIFY(text.size() < 400); // the longest path is cut, nothing is written past the buffer
}

void TestVnLog::clearGivesTheBufferItsFirstSizeBack()
{
    FillTo(log, 20000);
    log->Clear();
    QCOMPARE(log->Capacity(), 1000);
    QCOMPARE(log->Text(), "<END>");
}

void TestVnLog::infoShowsItsBoxAndReturns()
{
    QString title, text;
    QTimer::singleShot(0, this, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        title = box->windowTitle();
        text = box->text();
        QTest::mouseClick(static_cast<QWidget *>(box->button(QMessageBox::Ok)), Qt::LeftButton);
    });
    vnInfo("Select one column");
    QCOMPARE(title, QStringLiteral("Info"));
    QCOMPARE(text, QStringLiteral("Select one column"));
}

void TestVnLog::fatalShowsItsTextAndEndsWithStatusOne()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), { QStringLiteral("--fatal") });
    QVERIFY(child.waitForFinished());
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    QCOMPARE(child.exitCode(), 1);
    const QByteArray printed
        = child.readAllStandardError().replace("\r\n", "\n"); // as text is ended
    QCOMPARE(printed, "\n-ERR- the table is out of order\n\n");
}

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--fatal") == 0)
        vnFatal("the table is out of order"); // there is no application object yet
    QApplication application(argc, argv);
    TestVnLog tests;
    return testing::RunTests(tests, argc, argv);
}

#include "tst_vnlog.moc"

#include "panel/MessageLog.h"

#include "testing/TestMain.h"

#include <QTextEdit>
#include <QThread>

#include <memory>

/// The handler of Qt's messages and the page that they go to.
class TestMessageLog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyMessageIsALineOfThePage();
    void aMessageWithoutAPageIsLost();
    void aPageThatIsGoneIsNoPage();
    void aMessageOfAnotherThreadComesWhenItsThreadServesEvents();
    void aMessageOfAnotherThreadFromBeforeThePageIsLost();
    void aMessageOfAnotherThreadMayOutliveThePage();
    void aMessageWrittenWhileOneIsAppendedIsDropped();
    void aPageThatIsAboutToGoIsTakenBack();
    void installingAgainKeepsThePage();

private:
    QtMessageHandler before = nullptr;
    std::unique_ptr<QTextEdit> page;
};

namespace {

QStringList Lines(const QTextEdit &page)
{
    return page.toPlainText().split(QLatin1Char('\n'));
}

void WarnFromAnotherThread(const char *text)
{
    std::unique_ptr<QThread> thread(QThread::create([text] { qWarning("%s", text); }));
    thread->start();
    QVERIFY(thread->wait());
}

} // namespace

void TestMessageLog::init()
{
    page = std::make_unique<QTextEdit>();
    before = qInstallMessageHandler(nullptr);
    MessageLog::Install();
    MessageLog::SetPage(page.get());
}

void TestMessageLog::cleanup()
{
    if (page)
        page->disconnect(this);
    MessageLog::SetPage(nullptr);
    qInstallMessageHandler(before);
}

void TestMessageLog::everyMessageIsALineOfThePage()
{
    qDebug("debug");
    qInfo("info");
    qWarning("warning");
    qCritical("critical");
    qWarning() << "items" << QStringLiteral("in quotes") << 7;
    qWarning("%s", "");
    QCOMPARE(Lines(*page),
        QStringList({ QStringLiteral("debug"), QStringLiteral("info"), QStringLiteral("warning"),
            QStringLiteral("critical"), QStringLiteral("items \"in quotes\" 7"), QString() }));
}

void TestMessageLog::aMessageWithoutAPageIsLost()
{
    MessageLog::SetPage(nullptr);
    qWarning("lost");
    MessageLog::SetPage(page.get());
    qWarning("kept");
    QCOMPARE(Lines(*page), QStringList{ QStringLiteral("kept") });
}

void TestMessageLog::aPageThatIsGoneIsNoPage()
{
    page.reset();
    qWarning("lost");
    WarnFromAnotherThread("lost, too");
    QCoreApplication::processEvents();
    page = std::make_unique<QTextEdit>();
    MessageLog::SetPage(page.get());
    QCOMPARE(page->toPlainText(), QString());
}

void TestMessageLog::aMessageOfAnotherThreadComesWhenItsThreadServesEvents()
{
    WarnFromAnotherThread("from afar");
    QCOMPARE(page->toPlainText(), QString());
    qWarning("from here");
    QCoreApplication::processEvents();
    QCOMPARE(
        Lines(*page), QStringList({ QStringLiteral("from here"), QStringLiteral("from afar") }));
}

void TestMessageLog::aMessageOfAnotherThreadFromBeforeThePageIsLost()
{
    MessageLog::SetPage(nullptr);
    WarnFromAnotherThread("too early");
    MessageLog::SetPage(page.get());
    QCoreApplication::processEvents();
    QCOMPARE(page->toPlainText(), QString());
}

void TestMessageLog::aMessageOfAnotherThreadMayOutliveThePage()
{
    WarnFromAnotherThread("on its way");
    page.reset();
    QCoreApplication::processEvents(); // and nothing is appended to what is gone
    page = std::make_unique<QTextEdit>();
    QCOMPARE(page->toPlainText(), QString());
}

void TestMessageLog::aMessageWrittenWhileOneIsAppendedIsDropped()
{
    connect(page.get(), &QTextEdit::textChanged, this, [] { qWarning("echo"); });
    qWarning("first");
    qWarning("second");
    QCOMPARE(Lines(*page), QStringList({ QStringLiteral("first"), QStringLiteral("second") }));
}

void TestMessageLog::aPageThatIsAboutToGoIsTakenBack()
{
    QTextEdit other;
    MessageLog::DropPage(&other); // not the one that is written to
    qWarning("kept");
    MessageLog::DropPage(page.get());
    qWarning("lost");
    QCOMPARE(Lines(*page), QStringList{ QStringLiteral("kept") });
}

void TestMessageLog::installingAgainKeepsThePage()
{
    MessageLog::Install();
    qWarning("kept");
    QCOMPARE(Lines(*page), QStringList{ QStringLiteral("kept") });
}

VN_TEST_MAIN(TestMessageLog)
#include "tst_messagelog.moc"

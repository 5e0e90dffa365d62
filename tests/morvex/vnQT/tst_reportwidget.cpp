#include "support/vnLog.h"
#include "support/vnPalette.h"
#include "testing/TestMain.h"
#include "vnQT/wSendReportWidget.h"
#include "vnQT/wToolBox.h"

#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTimer>
#include <QWindow>

#include <functional>

namespace {

/// The page on show, both sections open, so that everything in them can be worked by mouse.
class Page : public ReportWidget
{
public:
    Page() : ReportWidget(nullptr)
    {
        for (TitleItem *title : Titles())
            title->SetOpen(true);
        resize(620, 500);
        show();
        activateWindow();
        [this] { QVERIFY(QTest::qWaitForWindowActive(this)); }();
    }
    QList<TitleItem *> Titles() { return findChildren<TitleItem *>(); }
    void Click(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton); }

    /// Picks an entry of the combo box by keys.
    void PickSet(int set)
    {
        cbColorSet->setFocus();
        QTest::keyClick(cbColorSet, Qt::Key_Home);
        for (int i = 0; i < set; ++i)
            QTest::keyClick(cbColorSet, Qt::Key_Down);
        QCOMPARE(cbColorSet->currentIndex(), set);
    }
};

/// What the file dialog was, and what it did when it was worked.
struct DialogLook
{
    int count = 0;
    QString title;
    QString folder;
    QStringList filters;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptOpen;
    QString suffix;
    QWidget *parent = nullptr;
};

/// Clicks a button, waits for its dialog, types a name and a key there.
/// @param name absolute path, or empty to type none
DialogLook Ask(Page &page, QPushButton *button, const QString &name, Qt::Key end)
{
    DialogLook look;
    QTimer worker;
    QObject::connect(&worker, &QTimer::timeout, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        worker.stop();
        ++look.count;
        look.title = dialog->windowTitle();
        look.folder = dialog->directory().absolutePath();
        look.filters = dialog->nameFilters();
        look.fileMode = dialog->fileMode();
        look.acceptMode = dialog->acceptMode();
        look.suffix = dialog->defaultSuffix();
        look.parent = dialog->parentWidget();
        auto *edit = dialog->findChild<QLineEdit *>();
        if (!name.isEmpty())
            edit->setText(name);
        QTest::keyClick(edit, end);
    });
    worker.start(0);
    page.Click(button);
    return look;
}

QColor Role(QPalette::ColorRole role)
{
    return QApplication::palette().color(role);
}

} // namespace

class TestReportWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void signalsAndSlotsStandInTheirOrder();
    void thePageIsBuiltFromItsThreeForms();
    void theSectionsAreLogAndSettingsAndStartClosed();
    void theControlsStartOnTheirFirstValues();

    void clearLogEmptiesTheTextAndTheNextMessageIsTheFirstLine();
    void theLogKeepsTheNewest10000Lines();
    void testAndLogToFileDoNothing();

    void theFirstTouchTakesTheChosenSetToItsDarkEnd();
    void theSliderMovesAlongTheSet_data();
    void theSliderMovesAlongTheSet();
    void theSliderWithSystemChosenChangesNothingToSee();
    void pickingTheFifthEntryLeavesTheColours();

    void loadSettingsAsksForAnExistingFile();
    void saveSettingsAsksForAFileThatNeedNotExist();
    void aCancelledDialogTellsNothing_data();
    void aCancelledDialogTellsNothing();
    void saveNowShowsNoDialogAndTouchesNoFile();

private:
    QPalette systemColors;
};

void TestReportWidget::initTestCase()
{
    systemColors = QApplication::palette();
    ApplyColorSet(systemColors, /*set=*/0, /*range=*/0.0); // the first call reads the palette
}

/// Each test begins with the colours that the plug-in sets when it is loaded.
void TestReportWidget::init()
{
    QPalette colors = systemColors;
    ApplyColorSet(colors, /*set=*/1, /*range=*/1.0);
    QApplication::setPalette(colors);
}

void TestReportWidget::signalsAndSlotsStandInTheirOrder()
{
    const QMetaObject &meta = ReportWidget::staticMetaObject;
    QCOMPARE(meta.className(), "ReportWidget");
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        found << QString::fromLatin1(meta.method(i).methodSignature());
    QCOMPARE(found,
        QStringList({ QStringLiteral("SigGlobalSaveSettings(QString)"),
            QStringLiteral("SigGlobalLoadSettings(QString)"), QStringLiteral("OnPbClearLog()"),
            QStringLiteral("OnPbLoadSettings()"), QStringLiteral("OnPbSaveSettings()"),
            QStringLiteral("OnPbSaveSettingsNow()"), QStringLiteral("OnColorChanged(int)") }));
    for (int i = 0; i < 2; ++i)
        QCOMPARE(
            meta.method(meta.methodOffset() + i).parameterNames(), QList<QByteArray>{ "path" });
}

void TestReportWidget::thePageIsBuiltFromItsThreeForms()
{
    Page page;
    QCOMPARE(page.objectName(), QStringLiteral("SendReportWidget"));
    QCOMPARE(page.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(page.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(page.layout()->contentsMargins(), QMargins());

    const auto *log = page.findChild<QWidget *>(QStringLiteral("Log"));
    const auto *settings = page.findChild<QWidget *>(QStringLiteral("Settings"));
    QVERIFY(log && settings);
    QVERIFY(log->isAncestorOf(page.efLog) && log->isAncestorOf(page.pbTest));
    QVERIFY(settings->isAncestorOf(page.cbColorSet) && settings->isAncestorOf(page.pbSaveSettings));
    QCOMPARE(page.efLog->minimumHeight(), 20);
    QCOMPARE(page.efLog->sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(page.efLog->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(page.horizontalLayout_11->spacing(), 6);
    QCOMPARE(page.groupBox->sizePolicy().verticalPolicy(), QSizePolicy::Maximum);
    QCOMPARE(page.formLayout_2->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(page.formLayout_2->verticalSpacing(), 4);
    QCOMPARE(page.formLayout->rowCount(), 0);
    QCOMPARE(page.pbSaveSettingsNow->maximumWidth(), 60);

    QStringList texts;
    for (const QAbstractButton *button : page.findChildren<QAbstractButton *>())
        texts << button->text();
    texts << page.groupBox->title() << page.label_2->text() << page.label->text();
    texts.sort();
    QCOMPARE(texts,
        QStringList({ QStringLiteral("Clear Log"), QStringLiteral("Color Interface"),
            QStringLiteral("Color Range"), QStringLiteral("Color Set"),
            QStringLiteral("Load Settings"), QStringLiteral("Log To File"),
            QStringLiteral("Save Now"), QStringLiteral("Save Settings"), QStringLiteral("Test") }));
}

void TestReportWidget::theSectionsAreLogAndSettingsAndStartClosed()
{
    ReportWidget page(nullptr);
    page.show();
    QStringList titles;
    for (const TitleItem *title : page.findChildren<TitleItem *>()) {
        for (const QLabel *label : title->findChildren<QLabel *>()) {
            if (!label->text().isEmpty())
                titles << label->text();
        }
    }
    QCOMPARE(titles,
        QStringList({ QStringLiteral("Log"), QStringLiteral("Change/Load/Save Settings") }));
    QVERIFY(!page.efLog->isVisible());
    QVERIFY(!page.cbColorSet->isVisible());

    TitleItem *first = page.findChildren<TitleItem *>().at(0);
    QTest::mouseClick(page.windowHandle(), Qt::LeftButton, Qt::NoModifier,
        first->mapTo(&page, first->rect().center()));
    QVERIFY(page.efLog->isVisible());
}

void TestReportWidget::theControlsStartOnTheirFirstValues()
{
    Page page;
    QStringList sets;
    for (int i = 0; i < page.cbColorSet->count(); ++i)
        sets << page.cbColorSet->itemText(i);
    QCOMPARE(sets,
        QStringList({ QStringLiteral("System"), QStringLiteral("Dark AE"),
            QStringLiteral("Light AE"), QStringLiteral("Color Test"), QStringLiteral("5") }));
    QCOMPARE(page.cbColorSet->currentIndex(), 0);
    QCOMPARE(page.slColorRange->minimum(), 0);
    QCOMPARE(page.slColorRange->maximum(), 99);
    QCOMPARE(page.slColorRange->value(), 0);
    QCOMPARE(Role(QPalette::Window), QColor(88, 88, 88)); // the page touched nothing
}

void TestReportWidget::clearLogEmptiesTheTextAndTheNextMessageIsTheFirstLine()
{
    Page page;
    vnLog::Instance()->Add("a line of the memory log");
    const QByteArray before = vnLog::Instance()->Text();
    for (int i = 0; i < 3; ++i)
        page.efLog->append(QStringLiteral("message %1").arg(i));
    QCOMPARE(page.efLog->document()->blockCount(), 3);

    page.Click(page.pbClearLog);

    QCOMPARE(page.efLog->toPlainText(), QString());
    page.efLog->append(QStringLiteral("next"));
    QCOMPARE(page.efLog->document()->firstBlock().text(), QStringLiteral("next"));
    QCOMPARE(page.efLog->document()->blockCount(), 1);
    QCOMPARE(QByteArray(vnLog::Instance()->Text()), before); // that one is not touched
}

void TestReportWidget::theLogKeepsTheNewest10000Lines()
{
    Page page;
    for (int i = 0; i < 10007; ++i)
        page.efLog->append(QString::number(i));
    QCOMPARE(page.efLog->document()->blockCount(), 10000);
    QCOMPARE(page.efLog->document()->firstBlock().text(), QStringLiteral("7"));
    QCOMPARE(page.efLog->document()->lastBlock().text(), QStringLiteral("10006"));
}

void TestReportWidget::testAndLogToFileDoNothing()
{
    Page page;
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    page.efLog->append(QStringLiteral("kept"));
    const QPalette colors = QApplication::palette();

    page.Click(page.pbTest);
    page.Click(page.ckFile);
    page.efLog->append(QStringLiteral("kept too"));

    QVERIFY(page.ckFile->isChecked());
    QCOMPARE(page.efLog->toPlainText(), QStringLiteral("kept\nkept too"));
    QCOMPARE(QApplication::palette(), colors);
    QVERIFY(QDir(folder.path()).isEmpty());
    QDir::setCurrent(before);
}

void TestReportWidget::theFirstTouchTakesTheChosenSetToItsDarkEnd()
{
    Page page;
    QCOMPARE(Role(QPalette::Window), QColor(88, 88, 88));
    page.PickSet(1);
    QCOMPARE(Role(QPalette::Window), QColor(38, 38, 38));
    QCOMPARE(Role(QPalette::Base), QColor(13, 13, 13));
    QCOMPARE(page.pbTest->palette().color(QPalette::Button), QColor(38, 38, 38)); // it follows
}

void TestReportWidget::theSliderMovesAlongTheSet_data()
{
    QTest::addColumn<int>("set");
    QTest::addColumn<int>("value");
    QTest::addColumn<QColor>("window");

    QTest::newRow("dark, a step") << 1 << 1 << QColor(38, 38, 38); // 38.5, cut
    QTest::newRow("dark, half way") << 1 << 50 << QColor(63, 63, 63);
    QTest::newRow("dark, at its end") << 1 << 99 << QColor(87, 87, 87); // 0.99 at most
    QTest::newRow("light, half way") << 2 << 50 << QColor(186, 186, 186);
    QTest::newRow("loud, anywhere") << 3 << 70 << QColor(0, 255, 128);
}

void TestReportWidget::theSliderMovesAlongTheSet()
{
    QFETCH(const int, set);
    QFETCH(const int, value);
    Page page;
    page.PickSet(set);

    page.slColorRange->setFocus();
    QTest::keyClick(page.slColorRange, Qt::Key_Home);
    if (value == 99)
        QTest::keyClick(page.slColorRange, Qt::Key_End);
    while (page.slColorRange->value() < value)
        QTest::keyClick(page.slColorRange, Qt::Key_Right);

    QCOMPARE(page.slColorRange->value(), value);
    QTEST(Role(QPalette::Window), "window");
}

void TestReportWidget::theSliderWithSystemChosenChangesNothingToSee()
{
    Page page;
    page.slColorRange->setFocus();
    QTest::keyClick(page.slColorRange, Qt::Key_Right); // the first touch sets the set
    const QPalette colors = QApplication::palette();
    QCOMPARE(colors.color(QPalette::Window), systemColors.color(QPalette::Window));
    const QImage before = page.groupBox->grab().toImage();
    QCOMPARE(page.slColorRange->value(), 1);

    QTest::keyClick(page.slColorRange, Qt::Key_End);
    QCOMPARE(page.slColorRange->value(), 99);
    QCOMPARE(QApplication::palette(), colors);
    page.slColorRange->blockSignals(true); // back again, so that the slider itself looks the same
    QTest::keyClick(page.slColorRange, Qt::Key_Home);
    QTest::keyClick(page.slColorRange, Qt::Key_Right);
    QCOMPARE(page.groupBox->grab().toImage(), before);
}

/// The palette is set again, but Qt tells nobody of one that equals the last, so only the colours can
/// be judged.
void TestReportWidget::pickingTheFifthEntryLeavesTheColours()
{
    Page page;
    page.PickSet(3);
    const QPalette loud = QApplication::palette();

    QTest::keyClick(page.cbColorSet, Qt::Key_Down);

    QCOMPARE(page.cbColorSet->currentText(), QStringLiteral("5"));
    QCOMPARE(QApplication::palette(), loud);
}

void TestReportWidget::loadSettingsAsksForAnExistingFile()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("réglages.ini"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    Page page;
    QSignalSpy load(&page, &ReportWidget::SigGlobalLoadSettings);
    QSignalSpy save(&page, &ReportWidget::SigGlobalSaveSettings);

    const DialogLook look = Ask(page, page.pbLoadSettings, path, Qt::Key_Return);

    QCOMPARE(look.count, 1);
    QCOMPARE(look.title, QStringLiteral("Select Config File to Load"));
    QCOMPARE(look.folder, QDir::homePath());
    QCOMPARE(look.filters, QStringList(QStringLiteral("*.ini")));
    QCOMPARE(look.fileMode, QFileDialog::ExistingFile);
    QCOMPARE(look.acceptMode, QFileDialog::AcceptOpen);
    QCOMPARE(look.parent, static_cast<QWidget *>(&page));
    QCOMPARE(load.count(), 1);
    QCOMPARE(load.at(0).at(0).toString(), path);
    QCOMPARE(save.count(), 0);
}

void TestReportWidget::saveSettingsAsksForAFileThatNeedNotExist()
{
    const QTemporaryDir folder;
    Page page;
    QSignalSpy load(&page, &ReportWidget::SigGlobalLoadSettings);
    QSignalSpy save(&page, &ReportWidget::SigGlobalSaveSettings);

    const QString name = folder.filePath(QStringLiteral("mine"));
    const DialogLook look = Ask(page, page.pbSaveSettings, name, Qt::Key_Return);

    QCOMPARE(look.count, 1);
    QCOMPARE(look.title, QStringLiteral("Save Config as"));
    QCOMPARE(look.folder, QDir::homePath());
    QCOMPARE(look.filters, QStringList(QStringLiteral("*.ini")));
    QCOMPARE(look.acceptMode, QFileDialog::AcceptSave);
    QCOMPARE(look.suffix, QStringLiteral("ini"));
    QCOMPARE(save.count(), 1);
    QCOMPARE(save.at(0).at(0).toString(), name + QStringLiteral(".ini"));
    QCOMPARE(load.count(), 0);
    QVERIFY(QDir(folder.path()).isEmpty()); // the page only asks
}

void TestReportWidget::aCancelledDialogTellsNothing_data()
{
    QTest::addColumn<bool>("isLoad");
    QTest::newRow("load") << true;
    QTest::newRow("save") << false;
}

void TestReportWidget::aCancelledDialogTellsNothing()
{
    QFETCH(const bool, isLoad);
    Page page;
    QSignalSpy load(&page, &ReportWidget::SigGlobalLoadSettings);
    QSignalSpy save(&page, &ReportWidget::SigGlobalSaveSettings);

    const DialogLook look = Ask(page, isLoad ? page.pbLoadSettings : page.pbSaveSettings,
        QStringLiteral("typed.ini"), Qt::Key_Escape);

    QCOMPARE(look.count, 1);
    QCOMPARE(load.count(), 0);
    QCOMPARE(save.count(), 0);
}

void TestReportWidget::saveNowShowsNoDialogAndTouchesNoFile()
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    Page page;
    QSignalSpy load(&page, &ReportWidget::SigGlobalLoadSettings);
    QSignalSpy save(&page, &ReportWidget::SigGlobalSaveSettings);

    page.Click(page.pbSaveSettingsNow);

    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(save.count(), 1);
    QCOMPARE(save.at(0).at(0).toString(), QString());
    QCOMPARE(load.count(), 0);
    QVERIFY(QDir(folder.path()).isEmpty());
    QDir::setCurrent(before);
}

VN_TEST_MAIN(TestReportWidget)
#include "tst_reportwidget.moc"

#include "PanelFixture.h"

#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Undo.h"
#include "T_Types/T_Var.h"
#include "panel/Version.h"
#include "panel/WinGridDataAE.h"
#include "support/vnLog.h"
#include "testing/Platform.h"
#include "vnQT/wExpoGraph.h"
#include "vnQT/wSendReportWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMetaMethod>
#include <QProgressBar>
#include <QPushButton>
#include <QFile>
#include <QSettings>
#include <QSplitter>
#include <QStyleFactory>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

/// How the panel is put together: its form, its children in their order, what its construction
/// leaves behind, its flyout menu and its plain slots.
class TestPanelAssembly : public QObject
{
    Q_OBJECT

private slots:
    void theSlotsArePublishedInTheirOrder();
    void theFormIsBuiltOnTheWidget();
    void theChildrenStandInTheirPlaces();
    void theDevelopersControlsAreHidden();
    void theTabsAreThoseOfTheDocumentAndTheBoard();
    void twoRowsOfEditorsFitTheFixedHeight_data();
    void twoRowsOfEditorsFitTheFixedHeight();
    void noTimerRunsAfterTheConstruction();
    void theEffectsAreLookedUpInTheHost();
    void theBannerStandsOnTheLogPage();
    void aMessageFromBeforeThePageAppearsNowhere();
    void afterTheConstructorTheRecorderStaysEmpty();
    void theRefreshButtonReloadsTheSheet();
    void theReloadSlotsChangePlaces();
    void theSlotsWithoutABodyDoNothing();
    void theSettingsStoreIsNotWritten();
    void theCompositionsAreListedInTheProjectsOrder();
    void theListOfCompositionsEndsWhereTheHostFails_data();
    void theListOfCompositionsEndsWhereTheHostFails();
    void theFlyoutHasFiveEntries();
    void aFlyoutArrayOfFewerThanFiveGetsOnlyThose_data();
    void aFlyoutArrayOfFewerThanFiveGetsOnlyThose();
    void theFlyoutShowsAndHidesTheGraph();
    void showingTheSheetAgainByTheFlyoutReloadsIt();
    void theVersionLineDoesNothingWhenPicked_data();
    void theVersionLineDoesNothingWhenPicked();
    void theSnapSizesStayAsInherited();
    void aSecondPanelTakesOverTheMessages();
    void thePanelFollowsItsContainersSize();
};

namespace {

constexpr AEGP_FlyoutMenuCmdID kUnwritten = 4711;

struct Flyout
{
    explicit Flyout(PanelFixture &shown, A_long room = 5) : count(room)
    {
        for (AEGP_FlyoutMenuItem &item : items)
            item.cmdID = kUnwritten;
        error = shown.functions.PopulateFlyout(shown.panel->Refcon(), items, &count);
    }
    QString Text(int place) const
    {
        return QString::fromUtf8(reinterpret_cast<const char *>(items[place].utf8NameZ));
    }

    AEGP_FlyoutMenuItem items[6] = {};
    A_long count;
    A_Err error;
};

} // namespace

void TestPanelAssembly::theSlotsArePublishedInTheirOrder()
{
    const QMetaObject &meta = WinExpo::staticMetaObject;
    QCOMPARE(QByteArray(meta.className()), QByteArray("WinExpo"));
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        methods << meta.method(i).methodSignature();
    }
    QCOMPARE(methods,
        QByteArrayList({ "OnTimerRefresh()", "OnPbCreateAepFromMov()", "OnPbSelectAll()",
            "OnPbSelectNone()", "OnUpdate(UpdateLevel,void*)", "OnRefresh()", "OnCompoSelected()",
            "OnChangeCheckBox()", "OnPbClearLog()", "OnPbTest()", "OnPbHelp()",
            "OnReloadCompoList(QStringList&)", "OnPbReloadExpo()", "OnSpinChanged(T_Var*)",
            "OnRealoadStart()", "OnRealoadDone()" }));
    const QMetaMethod update = meta.method(meta.methodOffset() + 4);
    QCOMPARE(update.parameterNames(), QList<QByteArray>({ "upd", "caller" }));
    QCOMPARE(meta.method(meta.methodOffset() + 11).returnType(), int(QMetaType::Bool));
}

void TestPanelAssembly::theFormIsBuiltOnTheWidget()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    const WinExpo &panel = *shown.panel;
    QCOMPARE(panel.objectName(), QStringLiteral("Form"));
    QCOMPARE(panel.windowTitle(), QStringLiteral("Form"));
    QCOMPARE(panel.sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(panel.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(panel.font().pointSize(), 8);
    QCOMPARE(panel.verticalLayout->spacing(), 4);
    QCOMPARE(panel.verticalLayout->contentsMargins(), QMargins(6, 6, 6, 6));
    QCOMPARE(panel.horizontalLayout->spacing(), 2);
    QCOMPARE(panel.horizontalLayout->sizeConstraint(), QLayout::SetMaximumSize);
    QCOMPARE(panel.pbRefresh->width(), 24);
    QCOMPARE(panel.pbRefresh->text(), QStringLiteral("U\np\nd\na\nt\ne"));
    QCOMPARE(panel.pbRefresh->toolTip(), QStringLiteral("Refresh Grid"));
    QCOMPARE(panel.pbRefresh->font().weight(), 75);
    QCOMPARE(panel.pbRefresh->cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(panel.progressBar->value(), 24);
    QVERIFY(!panel.progressBar->isTextVisible());
    QCOMPARE(panel.progressBar->orientation(), Qt::Vertical);
    QVERIFY(panel.progressBar->isHidden());
    QCOMPARE(panel.label->maximumHeight(), 28);
    QVERIFY(panel.label->openExternalLinks());
    QVERIFY(panel.label->text().contains(QLatin1String(Version::GuideAddress())));
    QVERIFY(!panel.label->text().contains(QLatin1Char('%')));
}

void TestPanelAssembly::theChildrenStandInTheirPlaces()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    const WinExpo &panel = *shown.panel;
    QCOMPARE(panel.horizontalLayout->itemAt(0)->widget(), static_cast<QWidget *>(&shown.Dock()));
    QCOMPARE(panel.horizontalLayout->itemAt(1)->layout(),
        static_cast<QLayout *>(panel.verticalLayout_4));
    QCOMPARE(panel.horizontalLayout->itemAt(2)->layout(),
        static_cast<QLayout *>(panel.verticalLayout_2));
    auto *splitter = qobject_cast<QSplitter *>(panel.verticalLayout->itemAt(1)->widget());
    QVERIFY(splitter);
    QCOMPARE(splitter->orientation(), Qt::Vertical);
    QCOMPARE(splitter->widget(0), static_cast<QWidget *>(&shown.Graph()));
    QCOMPARE(splitter->widget(1), static_cast<QWidget *>(&shown.Grid()));
    for (int i = 0; i < 2; ++i) {
        const QWidget *widget = splitter->widget(i);
        QCOMPARE(widget->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(widget->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(widget->maximumSize(), QSize(16777215, 16777215));
        QVERIFY(widget->isVisible());
    }
}

void TestPanelAssembly::theDevelopersControlsAreHidden()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    for (const QWidget *control : std::initializer_list<const QWidget *>{
             shown.panel->ckDb1, shown.panel->ckDb2, shown.panel->ckDb3, shown.panel->pbDb1 }) {
        QVERIFY(control->isHidden());
        QCOMPARE(control->maximumWidth(), 16);
    }
    shown.Poll();
    shown.ClickCell(0, 8);
    shown.panel->pbDb1->click(); // hidden, but alive
    QCOMPARE(shown.HostFrame(), 8);
}

void TestPanelAssembly::theTabsAreThoseOfTheDocumentAndTheBoard()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    QStringList titles;
    for (int tab = 0; tab < shown.Dock().count(); ++tab)
        titles << shown.Dock().tabText(tab);
    QCOMPARE(titles,
        QStringList(
            { QStringLiteral("Layer"), QStringLiteral("NewCol"), QStringLiteral("Transform"),
                QStringLiteral("Effect"), QStringLiteral("Setup"), QStringLiteral("Board") }));
    QCOMPARE(
        shown.EnabledTabs(), QStringList({ QStringLiteral("Setup"), QStringLiteral("Board") }));
    QVERIFY(qobject_cast<ReportWidget *>(shown.Dock().widget(5)));
}

void TestPanelAssembly::twoRowsOfEditorsFitTheFixedHeight_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("the form's own") << QSize(861, 134);
    QTest::newRow("a column at the side") << QSize(620, 500);
    QTest::newRow("large") << QSize(1400, 900);
}

void TestPanelAssembly::twoRowsOfEditorsFitTheFixedHeight()
{
    QFETCH(QSize, size);
    QStyle *worn = QStyleFactory::create(testing::PanelStyle());
    QVERIFY(worn);
    QApplication::setStyle(worn);
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.container->resize(size);
    for (int tab = 0; tab < 5; ++tab) {
        shown.Dock().setCurrentIndex(tab);
        QTRY_VERIFY(shown.Dock().widget(tab)->isVisible());
        PanelFixture::Settle();
        for (const T_QtEdit *editor : shown.Dock().widget(tab)->findChildren<T_QtEdit *>()) {
            QVERIFY2(editor->height() >= editor->minimumSizeHint().height(),
                qPrintable(editor->GetVar()->GetName()));
            QVERIFY(editor->parentWidget()->rect().contains(editor->geometry()));
        }
        // The sheet lies below the dashboard, never over it.
        const auto bottom = shown.Dock().mapTo(shown.panel, shown.Dock().rect().bottomLeft()).y();
        QVERIFY(shown.Graph().mapTo(shown.panel, QPoint(0, 0)).y() > bottom);
        const QPushButton *refresh = shown.panel->pbRefresh;
        QVERIFY(refresh->height() >= refresh->minimumSizeHint().height());
    }
}

void TestPanelAssembly::noTimerRunsAfterTheConstruction()
{
    PanelFixture shown;
    shown.Open();
    shown.TakeLog();
    QVERIFY(!shown.RefreshTimer().isActive());
    QCOMPARE(shown.RefreshTimer().parent(), static_cast<QObject *>(shown.panel));
    shown.host.GetTrace().Start();
    QTest::qWait(200);
    QCOMPARE(shown.host.GetTrace().Count("AEGP_GetActiveItem"), 0);
    QCOMPARE(shown.Grid().rowCount(), 0);
}

void TestPanelAssembly::theEffectsAreLookedUpInTheHost()
{
    PanelFixture shown;
    QCOMPARE(GetVipLi()->EfxKeyBlur, vipLi::kNoEffect);
    shown.Open();
    shown.TakeLog();
    QVERIFY(GetVipLi()->EfxKeyBlur != vipLi::kNoEffect);
    QVERIFY(GetVipLi()->EfxKeyFiltre != vipLi::kNoEffect);
}

void TestPanelAssembly::theBannerStandsOnTheLogPage()
{
    PanelFixture shown;
    shown.Open();
    const QStringList lines = shown.LogPage().toPlainText().split(QLatin1Char('\n'));
    QCOMPARE(lines,
        QStringList({ QStringLiteral("--- Morvex Log is Ready --- from qWarning() "),
            QStringLiteral("Morvex, the exposure sheet"), QStringLiteral("morvex v1.0"),
            QLatin1String(Version::BuildDate()), QLatin1String(Version::BuildTime()), QString() }));
    shown.TakeLog();
    qDebug("after");
    QCOMPARE(shown.TakeLog(), QStringList{ QStringLiteral("after") });
}

void TestPanelAssembly::aMessageFromBeforeThePageAppearsNowhere()
{
    PanelFixture shown;
    QTest::ignoreMessage(QtWarningMsg, "before");
    qWarning("before");
    shown.Open();
    QVERIFY(!shown.TakeLog().contains(QStringLiteral("before")));
}

void TestPanelAssembly::afterTheConstructorTheRecorderStaysEmpty()
{
    PanelFixture shown;
    QVERIFY(T_Undo::IsEnabled());
    shown.OpenOnCompo();
    QVERIFY(!T_Undo::IsEnabled());
    shown.ClickCell(0, 3);
    GetDoc()->GetVar(QStringLiteral("Opacity"), TV_INT)->SetValue(12);
    QCOMPARE(GetDoc()->opacity, 12);
    shown.PickTab("Transform");
    shown.Type(&GetDoc()->posX, QStringLiteral("7"));
    QCOMPARE(GetDoc()->posX, 7);
    QVERIFY(T_Undo::Instance()->mRecords.isEmpty());
}

void TestPanelAssembly::theRefreshButtonReloadsTheSheet()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.SetRemapKeys(shown.layers[2], { { 0, 8 } });
    QCOMPARE(shown.Shown(2)[0], QStringLiteral("1"));
    QTest::mouseClick(shown.panel->pbRefresh, Qt::LeftButton);
    QCOMPARE(shown.Shown(2)[0], QStringLiteral("8"));
}

void TestPanelAssembly::theReloadSlotsChangePlaces()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.panel->OnRealoadStart();
    QVERIFY(shown.panel->pbRefresh->isHidden());
    QVERIFY(shown.panel->progressBar->isVisible());
    QCOMPARE(shown.panel->progressBar->minimum(), 0);
    QCOMPARE(shown.panel->progressBar->maximum(), 0);
    shown.panel->OnRealoadDone();
    QVERIFY(shown.panel->pbRefresh->isVisible());
    QVERIFY(shown.panel->progressBar->isHidden());
}

void TestPanelAssembly::theSlotsWithoutABodyDoNothing()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    qWarning("a line");
    const rostrum::Project before = shown.host.GetProject();
    shown.host.GetTrace().Start();
    for (const char *slot : { "OnPbSelectAll", "OnPbSelectNone", "OnCompoSelected",
             "OnChangeCheckBox", "OnPbClearLog", "OnPbHelp", "OnPbCreateAepFromMov" })
        QVERIFY(QMetaObject::invokeMethod(shown.panel, slot));
    QCOMPARE(shown.host.GetTrace().Entries().size(), 0);
    QVERIFY(shown.host.GetProject() == before);
    QCOMPARE(shown.TakeLog(), QStringList{ QStringLiteral("a line") });
}

void TestPanelAssembly::theSettingsStoreIsNotWritten()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.panel->OnPbCreateAepFromMov();
    const QSettings store(QStringLiteral("Tessaly"), QStringLiteral("Morvex4After"));
    QVERIFY(!QFile::exists(store.fileName()));
}

void TestPanelAssembly::theCompositionsAreListedInTheProjectsOrder()
{
    PanelFixture shown;
    shown.AddCompo("scene 9", 5);
    shown.AddCompo("scene 7", 5);
    shown.AddCompo("\xC3\xA9t\xC3\xA9", 5);
    shown.OpenOnCompo();
    QStringList list{ QStringLiteral("old") };
    bool answer = false;
    GetDoc()->posX = 31;
    QVERIFY(QMetaObject::invokeMethod(
        shown.panel, "OnReloadCompoList", Q_RETURN_ARG(bool, answer), Q_ARG(QStringList &, list)));
    QVERIFY(answer);
    list.sort();
    QCOMPARE(list,
        QStringList({ QStringLiteral("scene 7"), QStringLiteral("scene 7"),
            QStringLiteral("scene 9"), QString::fromUtf8("\xC3\xA9t\xC3\xA9") }));
    QCOMPARE(shown.TextOf(&GetDoc()->posX), QStringLiteral("31"));
}

void TestPanelAssembly::theListOfCompositionsEndsWhereTheHostFails_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<QStringList>("list");
    const QStringList old{ QStringLiteral("old") };
    QTest::newRow("no project") << QByteArray("AEGP_GetProjectByIndex") << old;
    QTest::newRow("no root") << QByteArray("AEGP_GetProjectRootFolder") << old;
    QTest::newRow("the walk") << QByteArray("AEGP_GetNextProjItem") << QStringList();
    QTest::newRow("a kind") << QByteArray("AEGP_GetItemType") << QStringList();
    QTest::newRow("a name") << QByteArray("AEGP_GetItemName") << QStringList();
}

void TestPanelAssembly::theListOfCompositionsEndsWhereTheHostFails()
{
    QFETCH(QByteArray, function);
    QFETCH(QStringList, list);
    PanelFixture shown;
    shown.OpenOnCompo();
    vnLog::Instance()->Clear();
    shown.host.FailNext(function);
    QStringList filled{ QStringLiteral("old") };
    QVERIFY(!shown.panel->OnReloadCompoList(filled));
    QCOMPARE(filled, list);
    QVERIFY(QByteArray(vnLog::Instance()->Text()).startsWith("\r\n-ERR I- line "));
}

void TestPanelAssembly::theFlyoutHasFiveEntries()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    const Flyout flyout(shown);
    QCOMPARE(flyout.error, 0);
    QCOMPARE(flyout.count, 5);
    const struct
    {
        AEGP_FlyoutMenuMarkType mark;
        AEGP_FlyoutMenuCmdID command;
        QString text;
    } expected[] = { { 3, 0, QString() }, { 1, 30, QStringLiteral("Show Graph") },
        { 1, 31, QStringLiteral("Show Grid") }, { 3, 0, QString() },
        { 0, 0, QStringLiteral("morvex v1.0 - ") + QLatin1String(Version::BuildDate()) } };
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(flyout.items[i].type, expected[i].mark);
        QCOMPARE(flyout.items[i].cmdID, expected[i].command);
        QCOMPARE(flyout.items[i].indent, 1);
        QVERIFY(flyout.items[i].enabledB);
        QCOMPARE(flyout.items[i].utf8NameZ == nullptr, expected[i].text.isEmpty());
        QCOMPARE(flyout.Text(i), expected[i].text);
    }
    QCOMPARE(flyout.items[5].cmdID, kUnwritten);
    const Flyout again(shown); // the host keeps the pointer
    QCOMPARE(again.items[4].utf8NameZ, flyout.items[4].utf8NameZ);
}

void TestPanelAssembly::aFlyoutArrayOfFewerThanFiveGetsOnlyThose_data()
{
    QTest::addColumn<int>("room");
    for (const int room : { 4, 1, 0, -1 })
        QTest::addRow("%d entries", room) << room;
}

void TestPanelAssembly::aFlyoutArrayOfFewerThanFiveGetsOnlyThose()
{
    QFETCH(int, room);
    PanelFixture shown;
    shown.OpenOnCompo();
    const Flyout flyout(shown, room);
    QCOMPARE(flyout.error, 0);
    QCOMPARE(flyout.count, 5);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(flyout.items[i].cmdID == kUnwritten, i >= room);
}

void TestPanelAssembly::theFlyoutShowsAndHidesTheGraph()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    QCOMPARE(shown.functions.DoFlyoutCommand(shown.panel->Refcon(), 30), 0);
    QVERIFY(shown.Graph().isHidden());
    QVERIFY(shown.Grid().isVisible());
    QCOMPARE(Flyout(shown).items[1].type, AEGP_FlyoutMenuMarkType_NORMAL);
    QCOMPARE(Flyout(shown).items[2].type, AEGP_FlyoutMenuMarkType_CHECKED);
    QCOMPARE(shown.functions.DoFlyoutCommand(shown.panel->Refcon(), 30), 0);
    QVERIFY(shown.Graph().isVisible());
    QCOMPARE(Flyout(shown).items[1].type, AEGP_FlyoutMenuMarkType_CHECKED);
}

void TestPanelAssembly::showingTheSheetAgainByTheFlyoutReloadsIt()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.host.GetTrace().Start();
    QCOMPARE(shown.functions.DoFlyoutCommand(shown.panel->Refcon(), 31), 0);
    QVERIFY(shown.Grid().isHidden());
    QCOMPARE(Flyout(shown).items[2].type, AEGP_FlyoutMenuMarkType_NORMAL);
    QCOMPARE(shown.host.GetTrace().Count("AEGP_StartUndoGroup"), 0);
    shown.SetRemapKeys(shown.layers[2], { { 0, 8 } });
    QCOMPARE(shown.functions.DoFlyoutCommand(shown.panel->Refcon(), 31), 0);
    QVERIFY(shown.Grid().isVisible());
    QCOMPARE(shown.Shown(2)[0], QStringLiteral("8"));
}

void TestPanelAssembly::theVersionLineDoesNothingWhenPicked_data()
{
    QTest::addColumn<int>("command");
    for (const int command : { 0, 29, 32, -1 })
        QTest::addRow("command %d", command) << command;
}

void TestPanelAssembly::theVersionLineDoesNothingWhenPicked()
{
    QFETCH(int, command);
    PanelFixture shown;
    shown.OpenOnCompo();
    shown.host.GetTrace().Start();
    QCOMPARE(shown.functions.DoFlyoutCommand(shown.panel->Refcon(), command), 0);
    QVERIFY(shown.Graph().isVisible() && shown.Grid().isVisible());
    QCOMPARE(shown.host.GetTrace().Entries().size(), 0);
}

void TestPanelAssembly::theSnapSizesStayAsInherited()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    A_LPoint sizes[kMaxSnapSizes] = {};
    A_long count = kMaxSnapSizes;
    QCOMPARE(shown.functions.GetSnapSizes(shown.panel->Refcon(), sizes, &count), 0);
    QCOMPARE(count, 2);
    QCOMPARE(sizes[1].y, 400);
}

/// The host may make a panel anew and keep the one before.
void TestPanelAssembly::aSecondPanelTakesOverTheMessages()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    WinExpo *first = shown.panel;
    const std::unique_ptr<QWidget> place = std::move(shown.container);
    shown.Open();
    shown.TakeLog();
    qWarning("for the second");
    QCOMPARE(shown.TakeLog(), QStringList{ QStringLiteral("for the second") });
    auto *page = first->findChild<QTextEdit *>(QStringLiteral("efLog"));
    QVERIFY(!page->toPlainText().contains(QStringLiteral("for the second")));
    delete first;
    qWarning("still here");
    QCOMPARE(shown.TakeLog(), QStringList{ QStringLiteral("still here") });
}

void TestPanelAssembly::thePanelFollowsItsContainersSize()
{
    PanelFixture shown;
    shown.OpenOnCompo();
    for (const QSize &size : { QSize(700, 620), QSize(1200, 300) }) {
        shown.container->resize(size);
        QTRY_COMPARE(shown.panel->size(), size);
    }
}

VN_HOST_TEST_MAIN(TestPanelAssembly)
#include "tst_panel_assembly.moc"

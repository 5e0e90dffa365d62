#include "SuiteChecks.h"

#include <QDir>

using namespace rostrum;
using namespace testing;

class TestProjSuite : public QObject
{
    Q_OBJECT

private slots:
    void theOneProjectHasTheIndexZero();
    void theRootFolderIsTheFirstItem();
    void thePathIsATextOfItsOwnAndEmptyUntilSaved();
    void theHandleThatThePathOverwritesIsLostByRule();
    void nullArgumentsAreMisuses();
    void badHandlesAreErrors();
    void aProjectThatWasReplacedIsGone();
    void layersAreFoundAfterAnyNumberOfProjects();
};

void TestProjSuite::theOneProjectHasTheIndexZero()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    AEGP_ProjectH project = nullptr;
    QCOMPARE(suite->AEGP_GetProjectByIndex(1, &project), A_Err_PARAMETER);
    QCOMPARE(suite->AEGP_GetProjectByIndex(-1, &project), A_Err_PARAMETER);
    QVERIFY(!project);
    QCOMPARE(suite->AEGP_GetProjectByIndex(0, &project), A_Err_NONE);
    QCOMPARE(project, sheet.host.ProjectHandle());
    QVERIFY(project);
}

void TestProjSuite::theRootFolderIsTheFirstItem()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    AEGP_ItemH root = nullptr;
    QCOMPARE(suite->AEGP_GetProjectRootFolder(sheet.host.ProjectHandle(), &root), A_Err_NONE);
    QCOMPARE(root, sheet.host.ItemHandle(sheet.host.GetProject().RootFolder()));
}

void TestProjSuite::thePathIsATextOfItsOwnAndEmptyUntilSaved()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    for (const QString &path : { QString(), QStringLiteral("/scènes/été 7/шаг.rostrum") }) {
        sheet.host.GetDocument().path = path;
        AEGP_MemHandle memory = nullptr;
        QCOMPARE(suite->AEGP_GetProjectPath(sheet.host.ProjectHandle(), &memory), A_Err_NONE);
        QCOMPARE(sheet.host.Account(),
            (QByteArrayList{ "suite \"AEGP Proj Suite\" 8",
                "memory of " + QByteArray::number(2 * path.size() + 2)
                    + " bytes \"project path\"" }));
        QCOMPARE(TakeText(memory), QDir::toNativeSeparators(path));
    }
}

void TestProjSuite::theHandleThatThePathOverwritesIsLostByRule()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    const Suite<AEGP_MemorySuite1> memorySuite;
    AEGP_MemHandle memory = nullptr;
    QCOMPARE(memorySuite->AEGP_NewMemHandle(kPluginId, nullptr, 520, 0, &memory), A_Err_NONE);
    const AEGP_MemHandle first = memory;
    QCOMPARE(suite->AEGP_GetProjectPath(sheet.host.ProjectHandle(), &memory), A_Err_NONE);
    QVERIFY(memory != first);
    QCOMPARE(TakeText(memory), QString());

    QCOMPARE(sheet.host.HeldByRule(),
        QByteArrayList{ "memory of 520 bytes, its handle overwritten by the project's path" });
    QCOMPARE(sheet.host.OpenHandles(), 2); // the suites of this test
}

void TestProjSuite::nullArgumentsAreMisuses()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    const AEGP_ProjectH project = sheet.host.ProjectHandle();
    RefusesNull(sheet.host,
        { { "AEGP_GetProjectByIndex", [&] { return suite->AEGP_GetProjectByIndex(0, nullptr); } },
            { "AEGP_GetProjectPath", [&] { return suite->AEGP_GetProjectPath(project, nullptr); } },
            { "AEGP_GetProjectRootFolder",
                [&] { return suite->AEGP_GetProjectRootFolder(project, nullptr); } } });
}

void TestProjSuite::badHandlesAreErrors()
{
    SheetFixture sheet;
    const Suite<AEGP_ProjSuite5> suite;
    const AEGP_ProjectH stale = sheet.host.ProjectHandle();
    sheet.host.GetDocument().Replace(Project());
    RefusesBadHandles(sheet.host, stale, [&](AEGP_ProjectH project) {
        AEGP_ItemH root = nullptr;
        const A_Err error = suite->AEGP_GetProjectRootFolder(project, &root);
        return root ? A_Err_NONE : error;
    });
    RefusesBadHandles(sheet.host, stale, [&](AEGP_ProjectH project) {
        AEGP_MemHandle memory = nullptr;
        const A_Err error = suite->AEGP_GetProjectPath(project, &memory);
        return memory ? A_Err_NONE : error;
    });
}

void TestProjSuite::aProjectThatWasReplacedIsGone()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> layers;
    const AEGP_LayerH layer = sheet.LayerH();
    const Project same = sheet.host.GetProject(); // the ids are the same, the things are not
    sheet.host.GetDocument().Replace(same);
    A_long index = -5;
    QCOMPARE(layers->AEGP_GetLayerIndex(layer, &index), kErrBadHandle);
    QCOMPARE(layers->AEGP_GetLayerIndex(sheet.LayerH(), &index), A_Err_NONE);
    QCOMPARE(index, 0);
    QVERIFY(layer != sheet.LayerH());
}

void TestProjSuite::layersAreFoundAfterAnyNumberOfProjects()
{
    SheetFixture sheet;
    const Suite<AEGP_LayerSuite4> layers;
    const Project same = sheet.host.GetProject();
    for (int i = 0; i < 4200; ++i) { // more than a handle has room to tell apart
        A_long index = -5;
        QCOMPARE(layers->AEGP_GetLayerIndex(sheet.LayerH(), &index), A_Err_NONE);
        QCOMPARE(index, 0);
        sheet.host.GetDocument().Replace(same);
    }
}

VN_HOST_TEST_MAIN(TestProjSuite)
#include "tst_projsuite.moc"

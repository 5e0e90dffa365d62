// Anything that a user might do, thousands of times over.
//
//     tst_panel_random [--seed N] [--actions N] [--verbose]
#include "PanelMonkey.h"

using testing::PanelMonkey;
using testing::PanelStage;

namespace {

struct Settings
{
    quint32 seed = 2015;
    int actions = 10000;
    bool isVerbose = false; // each action on standard error, before the next begins
} settings;

constexpr int kLookAt = 100; // actions between two looks at the whole sheet

} // namespace

class TestPanelRandom : public QObject
{
    Q_OBJECT

private slots:
    void whateverTheUserDoesNothingBreaks();
};

void TestPanelRandom::whateverTheUserDoesNothingBreaks()
{
    std::printf("seed %u, %d actions\n", settings.seed, settings.actions);
    std::fflush(stdout);
    PanelStage stage;
    PanelMonkey monkey(stage, settings.seed);
    QByteArrayList last;
    for (int action = 1; action <= settings.actions; ++action) {
        last << QByteArray::number(action) + ' ' + monkey.Act();
        if (settings.isVerbose)
            std::fprintf(stderr, "%s\n", last.last().constData());
        QByteArray error = monkey.HostError();
        if (error.isEmpty() && action % kLookAt == 0)
            error = monkey.SheetError();
        QVERIFY2(error.isEmpty(),
            (error + "; before: " + last.mid(last.size() - 12).join(", ")).constData());
    }
    monkey.Rest();
    QCOMPARE(monkey.HostError(), QByteArray());
    std::printf("%d changes in the host, %d columns held against it\n", stage.host.ChangeCount(),
        monkey.ColumnsCompared());
    if (settings.actions >= 1000) { // or else it was not looked at what was done
        QVERIFY(stage.host.ChangeCount() > settings.actions / 10);
        QVERIFY(monkey.ColumnsCompared() > settings.actions / kLookAt / 2);
    }
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QVector<char *> rest;
    for (int i = 0; i < argc; ++i) {
        const QByteArray word(argv[i]);
        if (word == "--seed" && i + 1 < argc)
            settings.seed = QByteArray(argv[++i]).toUInt();
        else if (word == "--actions" && i + 1 < argc)
            settings.actions = QByteArray(argv[++i]).toInt();
        else if (word == "--verbose")
            settings.isVerbose = true;
        else
            rest << argv[i];
    }
    testing::CollectHostEnds();
    TestPanelRandom tests;
    return testing::RunTests(tests, rest.size(), rest.data());
}

#include "tst_panel_random.moc"

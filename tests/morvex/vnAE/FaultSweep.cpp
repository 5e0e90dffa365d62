#include "FaultSweep.h"

#include "shell/SuiteHandler.h"
#include "support/vnLog.h"

namespace {

const Keys kKeys{ { 0, 1 }, { 4, 2 }, { 9, 3 } };

/// The host's one sheet, as an operation finds it.
class PreparedSheet : public LibrarySheet
{
public:
    explicit PreparedSheet(const SweptOperation &operation) : LibrarySheet(kKeys)
    {
        if (operation.prepare)
            operation.prepare(*this);
        host.Faults().Clear();
        vnLog::Instance()->Clear();
    }
    ~PreparedSheet()
    {
        host.Faults().Clear();
        if (host.GetDocument().IsGroupOpen()) // by StartUndoGroup, which has no other end here
            GetVipLi()->EndUndoGroup();
    }
};

/// The functions that an operation calls when nothing fails, in order.
QByteArrayList CallsOf(const SweptOperation &operation)
{
    PreparedSheet sheet(operation);
    sheet.host.GetTrace().Start();
    operation.run();
    return sheet.host.GetTrace().Functions();
}

bool IsGiveBack(const QByteArray &function)
{
    return rostrum::FaultPlan::IsGiveBack(function.constData());
}

/// "AEGP_GetLayerIndex#2" for the second call of that function.
QByteArray Numbered(const QByteArrayList &calls, int call)
{
    const int number = calls.mid(0, call + 1).count(calls[call]);
    return calls[call] + '#' + QByteArray::number(number);
}

/// @param call with its number
bool Names(const QByteArrayList &list, const QByteArray &call)
{
    return list.contains(call) || list.contains(call.left(call.indexOf('#')));
}

QByteArray Log()
{
    return vnLog::Instance()->Text();
}

/// The log starts with the line of a step that failed in the library, one of the host or, where the
/// host's own answer is not looked at, the step that needed it.
bool IsTold()
{
    const bool isErrorLine
        = Log().startsWith("\r\n-ERR I- line ") || Log().startsWith("\r\n-ERR B- line ");
    return isErrorLine && Log().contains(", file(morvex/vnAE/");
}

/// What the rule leaves open, and nothing else; the end of the host expects the same.
void CheckOpen(
    LibrarySheet &sheet, const SweptOperation &operation, const QByteArray &failed, bool isGiveBack)
{
    const QByteArrayList open = sheet.host.Account();
    if (operation.leftOpen)
        QCOMPARE(open, operation.leftOpen(sheet, failed));
    else
        QCOMPARE(open.size(), isGiveBack ? 1 : 0); // what cannot be given back stays open
    for (const QByteArray &line : open)
        testing::ExpectAtEnd({ "left open: " + line });
}

} // namespace

QByteArray Bool(bool value)
{
    return value ? "true" : "false";
}

QByteArray Text(bool value, qint32 out)
{
    return Bool(value) + ' ' + QByteArray::number(out);
}

void FaultSweep::AddRows() const
{
    QTest::addColumn<int>("number");
    const QVector<SweptOperation> operations = Operations();
    for (int i = 0; i < operations.size(); ++i)
        QTest::newRow(operations[i].name) << i;
}

void FaultSweep::eachCallFailsOnce_data()
{
    AddRows();
}

void FaultSweep::eachCallFailsOnce()
{
    QFETCH(int, number);
    const SweptOperation operation = Operations()[number];
    QByteArrayList calls;
    for (const QByteArray &call : CallsOf(operation)) {
        if (!IsGiveBack(call))
            calls << call;
    }
    QVERIFY(!calls.isEmpty());

    for (int k = 0; k < calls.size(); ++k) {
        const QByteArray failed = Numbered(calls, k);
        PreparedSheet sheet(operation);
        sheet.host.Faults().SpareGiveBacks(true);
        sheet.host.FailNth(k + 1);

        const QByteArray answer = operation.run();

        sheet.host.Faults().Clear();
        const QByteArray where = failed + " answers " + answer + " and logs " + Log();
        const bool isUnchecked = Names(operation.unchecked, failed);
        if (isUnchecked)
            QVERIFY2(Log() == "<END>", where.constData());
        else if (Names(operation.bothWays, failed))
            QVERIFY2(IsTold() || Log() == "<END>", where.constData());
        else
            QVERIFY2(IsTold(), where.constData());
        if (!isUnchecked && !Names(operation.toldOnly, failed))
            QVERIFY2(answer == operation.failure, where.constData());
        CheckOpen(sheet, operation, failed, /*isGiveBack=*/false);
        if (QTest::currentTestFailed())
            return;
    }
}

void FaultSweep::eachSuiteIsMissingOnce_data()
{
    AddRows();
}

void FaultSweep::eachSuiteIsMissingOnce()
{
    QFETCH(int, number);
    const SweptOperation operation = Operations()[number];
    QByteArrayList pairs; // "name|version" of what the operation acquires
    {
        PreparedSheet sheet(operation);
        sheet.host.GetTrace().Start();
        operation.run();
        for (const rostrum::TraceEntry &entry : sheet.host.GetTrace().Entries()) {
            const QByteArray pair
                = QByteArray(entry.suite) + '|' + QByteArray::number(entry.version);
            if (QByteArray(entry.function).startsWith("AEGP_") && !pairs.contains(pair))
                pairs << pair;
        }
    }
    QVERIFY(!pairs.isEmpty());

    for (const QByteArray &pair : qAsConst(pairs)) {
        PreparedSheet sheet(operation);
        sheet.host.Withhold(pair.split('|')[0], pair.split('|')[1].toInt());
        SuiteErr thrown = 0;
        try {
            operation.run();
        } catch (SuiteErr err) {
            thrown = err;
        }
        QCOMPARE(thrown, PF_Err_BAD_CALLBACK_PARAM);
        QCOMPARE(sheet.host.Account(), QByteArrayList()); // all that was acquired is released
    }
}

void FaultSweep::aGivingBackThatFailsIsSurvived_data()
{
    AddRows();
}

void FaultSweep::aGivingBackThatFailsIsSurvived()
{
    // What cannot be given back stays open, by definition; where the operation does not look at
    // it, the answer is as if it had been.
    QFETCH(int, number);
    const SweptOperation operation = Operations()[number];
    const QByteArrayList calls = CallsOf(operation);
    QByteArray expected;
    {
        PreparedSheet sheet(operation);
        expected = operation.run();
    }
    for (int k = 0; k < calls.size(); ++k) {
        if (!IsGiveBack(calls[k]))
            continue;
        const QByteArray failed = Numbered(calls, k);
        PreparedSheet sheet(operation);
        sheet.host.FailNth(k + 1);

        const QByteArray answer = operation.run();

        const bool isChecked = Names(operation.checkedGiveBacks, failed);
        const QByteArray where = failed + " answers " + answer + " and logs " + Log();
        QVERIFY2(answer == (isChecked ? operation.failure : expected), where.constData());
        QVERIFY2(IsTold() == isChecked, where.constData());
        CheckOpen(sheet, operation, failed, /*isGiveBack=*/true);
        if (QTest::currentTestFailed())
            return;
    }
}

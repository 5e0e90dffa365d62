// The host's tables as hostapi declares them, against the facts in tests/data/host-abi.
//
// Both sides are brought into one form, the shape of a parameter: "int32", "const char8*",
// "opaque**", "struct8*", "function". The facts name types, so that kTypeShapes tells the shape
// that each name has in the host itself; it is written down apart from the declarations.

#include "hostapi/SlotOrder.h"
#include "hostapi/Suites.h"
#include "testing/TestMain.h"

#include <QFile>
#include <QHash>
#include <QVector>

#include <type_traits>

namespace {

// The shapes of the declarations.

template <class T, class = void>
struct IsComplete : std::false_type
{ };
template <class T>
struct IsComplete<T, std::void_t<decltype(sizeof(T))>> : std::true_type
{ };

template <class T>
QByteArray ScalarShape()
{
    const QByteArray bits = QByteArray::number(static_cast<int>(sizeof(T) * 8));
    if (std::is_same_v<T, char>)
        return "char" + bits;
    if (std::is_floating_point_v<T>)
        return "float" + bits;
    return (std::is_signed_v<T> ? "int" : "uint") + bits;
}

template <class T>
QByteArray Shape()
{
    if constexpr (std::is_const_v<T>)
        return "const " + Shape<std::remove_const_t<T>>();
    else if constexpr (std::is_pointer_v<T> && std::is_function_v<std::remove_pointer_t<T>>)
        return "function";
    else if constexpr (std::is_pointer_v<T>)
        return Shape<std::remove_pointer_t<T>>() + "*";
    else if constexpr (std::is_void_v<T>)
        return "void";
    else if constexpr (std::is_arithmetic_v<T>)
        return ScalarShape<T>();
    else if constexpr (IsComplete<T>::value)
        return "struct" + QByteArray::number(static_cast<int>(sizeof(T)));
    else
        return "opaque";
}

/// The shapes of a function's parameters, the result's in front.
template <class Result, class... Args>
QList<QByteArray> SignatureOf(Result (*)(Args...))
{
    return { Shape<Result>(), Shape<Args>()... };
}

struct Slot
{
    QByteArray function;
    QByteArray suite;
    int version;
    QByteArray table; // the name of the table's type
    std::size_t tableSize; // bytes
    std::size_t offset; // bytes
    QList<QByteArray> signature;
};

template <class Table>
Slot MakeSlot(
    const char *function, const char *table, std::size_t offset, const QList<QByteArray> &signature)
{
    return { function, Table::kName, Table::kVersion, table, sizeof(Table), offset, signature };
}

QVector<Slot> MakeSlots()
{
    QVector<Slot> rows;
#define VN_TABLE(Table, slots)
#define VN_SLOT(Table, name, index)                                                                \
    rows << MakeSlot<Table>(                                                                       \
        #name, #Table, offsetof(Table, name), SignatureOf(decltype(Table::name)(nullptr)))
#include "hostapi/SlotList.h"
#undef VN_SLOT
#undef VN_TABLE
    return rows;
}

const QVector<Slot> &DeclaredSlots()
{
    static const QVector<Slot> rows = MakeSlots();
    return rows;
}

// The shapes of the facts.

struct TypeShape
{
    const char *shape;
    const char *names; // split by blanks
};

const TypeShape kTypeShapes[] = {
    { "int32",
        "A_long A_Err AEGP_PluginID AEGP_Command AEGP_InstalledEffectKey AEGP_EffectIndex "
        "AEGP_KeyframeIndex AEGP_LayerStream AEGP_MaskStream AEGP_StreamType AEGP_StreamFlags "
        "AEGP_KeyframeInterpolationType AEGP_KeyInterpolationMask AEGP_KeyframeFlags "
        "AEGP_ItemFlags AEGP_CompFlags AEGP_LayerFlags AEGP_EffectFlags AEGP_MemFlag "
        "AEGP_LayerIDVal AEGP_ObjectType AEGP_Platform AEIO_FileType PF_ParamIndex PF_ParamType "
        "PF_Cmd PF_CursorType AEGP_MenuID PF_FontStyleSheet" },
    { "uint32", "A_u_long AEGP_HookPriority AEGP_MemSize AEGP_FootageSignature" },
    { "int16",
        "A_short AEGP_ItemType AEGP_LTimeMode AEGP_LayerQuality PF_App_ColorType "
        "PF_EyeDropperSampleMode" },
    { "uint16", "A_UTF16Char" },
    { "int8", "AEGP_LabelID" },
    { "char8", "A_char AEGP_ProjBitDepth PF_Boolean" },
    { "uint8", "A_u_char A_Boolean AEGP_InterpretationStyle" },
    { "float64", "A_FpLong" },
    { "void", "void" },
    { "struct4", "A_Version" },
    { "struct8", "A_Time A_Ratio" },
    { "struct12", "AEGP_FileSequenceImportOptions" },
    { "struct16", "A_FloatPoint" },
    { "struct32", "AEGP_ColorVal AEGP_StreamVal" },
    { "struct40", "AEGP_StreamValue AEGP_StreamValue2" },
    { "struct56", "AEGP_CollectionItemV2" },
    { "opaque**",
        "AEGP_ProjectH AEGP_ItemH AEGP_CompH AEGP_FootageH AEGP_LayerH AEGP_EffectRefH "
        "AEGP_MaskRefH AEGP_StreamRefH AEGP_Collection2H AEGP_AddKeyframesInfoH AEGP_MemHandle "
        "PF_ContextH" },
    { "opaque*",
        "AEGP_GlobalRefcon AEGP_CommandRefcon AEGP_UpdateMenuRefcon AEGP_DeathRefcon "
        "AEGP_VersionRefcon AEGP_AboutStringRefcon AEGP_AboutRefcon AEGP_IdleRefcon "
        "AEGP_IORefcon AEGP_CreatePanelRefcon AEGP_PanelH AEGP_ItemViewP" },
    { "function",
        "AEGP_CommandHook AEGP_UpdateMenuHook AEGP_DeathHook AEGP_VersionHook "
        "AEGP_AboutStringHook AEGP_AboutHook AEGP_IdleHook AEGP_CreatePanelHook" },
    // Named in slots that nobody calls, and therefore left incomplete.
    { "opaque",
        "AEGP_ErrReportState AEGP_FootageInterp AEGP_FootageLayerKey AEGP_KeyframeEase "
        "AEGP_LayerTransferMode AEGP_SoundDataFormat AEGP_TimeDisplay2 AEIO_FunctionBlock4 "
        "AEIO_ModuleInfo A_FloatRect A_Matrix4 AEGP_DownsampleFactor PF_App_Color "
        "PF_AppPersonalTextInfo PF_FontName PF_ParamDefUnion PF_PixelFloat PF_Point PF_Rect "
        "PR_ArtisanEntryPoints PT_TrackerEntryPoints" },
};

QHash<QByteArray, QByteArray> ShapesByName()
{
    QHash<QByteArray, QByteArray> shapes;
    for (const TypeShape &row : kTypeShapes) {
        for (const QByteArray &name : QByteArray(row.names).split(' '))
            shapes.insert(name, row.shape);
    }
    return shapes;
}

/// @param type as the facts write it, "const A_Time*". @return "unknown ..." for a strange name
QByteArray ShapeOfFact(QByteArray type)
{
    static const QHash<QByteArray, QByteArray> shapes = ShapesByName();
    int stars = 0;
    while (type.endsWith('*')) {
        type.chop(1);
        ++stars;
    }
    const bool isConst = type.startsWith("const ");
    if (isConst)
        type.remove(0, 6);
    const QByteArray base = shapes.value(type, "unknown " + type);
    // A parameter that is itself const, behind no pointer, has the signature of a plain one.
    return (isConst && stars > 0 ? "const " : "") + base + QByteArray(stars, '*');
}

QList<QByteArray> SignatureOfFact(const QByteArray &parameters)
{
    QList<QByteArray> signature = { "int32" }; // every function answers an error number
    if (parameters == "void")
        return signature;
    for (const QByteArray &type : parameters.split(';'))
        signature << ShapeOfFact(type.trimmed());
    return signature;
}

/// The rows of a file of facts as its columns by name. Only the last column holds commas.
QVector<QHash<QByteArray, QByteArray>> Facts(const char *fileName)
{
    QFile file(QStringLiteral(VN_TEST_DATA "/host-abi/") + QLatin1String(fileName));
    QVector<QHash<QByteArray, QByteArray>> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    const QList<QByteArray> names = file.readLine().trimmed().split(',');
    while (!file.atEnd()) {
        const QList<QByteArray> cells = file.readLine().trimmed().split(',');
        QHash<QByteArray, QByteArray> row;
        for (int i = 0; i < names.size(); ++i)
            row.insert(names[i], cells.value(i));
        rows << row;
    }
    return rows;
}

} // namespace

class TestHostApiFacts : public QObject
{
    Q_OBJECT

private slots:
    void everyDeclaredSlotIsAFactAndEveryFactIsDeclared();
    void aSlotStandsAtItsPlaceInTheTableOfItsSuite_data();
    void aSlotStandsAtItsPlaceInTheTableOfItsSuite();
    void aTableHasNoSlotBeyondItsFacts();
    void aCalledFunctionNeedsNoIncompleteStruct();
    void theHooksTakeTheirArgumentsInTheHostsOrder_data();
    void theHooksTakeTheirArgumentsInTheHostsOrder();
    void everyTableInUseIsPublished();
};

void TestHostApiFacts::everyDeclaredSlotIsAFactAndEveryFactIsDeclared()
{
    QList<QByteArray> declared, facts;
    for (const Slot &slot : DeclaredSlots())
        declared << slot.suite + ' ' + QByteArray::number(slot.version) + ' ' + slot.function;
    for (const auto &fact : Facts("suites.csv"))
        facts << fact["suite_name"] + ' ' + fact["version"] + ' ' + fact["function"];
    QCOMPARE(facts.size(), 301);
    QCOMPARE(declared, facts);
}

void TestHostApiFacts::aSlotStandsAtItsPlaceInTheTableOfItsSuite_data()
{
    QTest::addColumn<int>("slotNumber");
    const auto facts = Facts("suites.csv");
    for (int i = 0; i < facts.size(); ++i) {
        const QByteArray name
            = facts[i]["suite_name"] + ' ' + facts[i]["version"] + ", " + facts[i]["function"];
        QTest::newRow(name.constData()) << i;
    }
}

void TestHostApiFacts::aSlotStandsAtItsPlaceInTheTableOfItsSuite()
{
    QFETCH(int, slotNumber);
    QVERIFY(slotNumber < DeclaredSlots().size());
    const auto fact = Facts("suites.csv")[slotNumber];
    const Slot &slot = DeclaredSlots()[slotNumber];

    QCOMPARE(slot.function, fact["function"]);
    QCOMPARE(slot.suite, fact["suite_name"]);
    QCOMPARE(slot.version, fact["version"].toInt());
    QCOMPARE(slot.offset, fact["slot_index"].toUInt() * kSlotSize);
    QVERIFY2(slot.table.endsWith("Suite" + fact["struct_number"]), slot.table.constData());
    QCOMPARE(slot.signature, SignatureOfFact(fact["parameters"]));
}

void TestHostApiFacts::aTableHasNoSlotBeyondItsFacts()
{
    QHash<QByteArray, std::size_t> slotCounts;
    for (const auto &fact : Facts("suites.csv"))
        ++slotCounts[fact["suite_name"] + ' ' + fact["version"]];
    QCOMPARE(slotCounts.size(), 16);
    for (const Slot &slot : DeclaredSlots()) {
        const QByteArray pair = slot.suite + ' ' + QByteArray::number(slot.version);
        QCOMPARE(slot.tableSize, slotCounts.value(pair) * kSlotSize);
    }
}

void TestHostApiFacts::aCalledFunctionNeedsNoIncompleteStruct()
{
    int called = 0;
    const auto facts = Facts("suites.csv");
    for (int i = 0; i < facts.size(); ++i) {
        if (facts[i]["used"] != "yes")
            continue;
        ++called;
        for (const QByteArray &type : facts[i]["parameters"].split(';')) {
            if (type.contains('*') && !type.contains("FootageLayerKey")) // null is passed there
                QVERIFY2(!ShapeOfFact(type.trimmed()).endsWith("opaque*"), type.constData());
        }
    }
    QCOMPARE(called, 82);
}

void TestHostApiFacts::theHooksTakeTheirArgumentsInTheHostsOrder_data()
{
    using Signature = QList<QByteArray>;
    QTest::addColumn<Signature>("declared");
    QTest::addColumn<Signature>("fact");
    QTest::newRow("command") << SignatureOf(AEGP_CommandHook())
                             << Signature{ "int32", "opaque*", "opaque*", "int32", "uint32",
                                    "uint8", "uint8*" };
    QTest::newRow("update menu") << SignatureOf(AEGP_UpdateMenuHook())
                                 << Signature{ "int32", "opaque*", "opaque*", "int32" };
    QTest::newRow("death") << SignatureOf(AEGP_DeathHook())
                           << Signature{ "int32", "opaque*", "opaque*" };
    QTest::newRow("idle") << SignatureOf(AEGP_IdleHook())
                          << Signature{ "int32", "opaque*", "opaque*", "int32*" };
    QTest::newRow("create panel") << SignatureOf(AEGP_CreatePanelHook())
                                  << Signature{ "int32", "opaque*", "opaque*", "void*", "opaque*",
                                         "struct24*", "opaque**" };
    QTest::newRow("entry point") << SignatureOf(AEGP_EntryPoint())
                                 << Signature{ "int32", "struct56*", "int32", "int32", "int32",
                                        "opaque**" };
    QTest::newRow("snap sizes") << SignatureOf(decltype(AEGP_PanelFunctions1::GetSnapSizes)())
                                << Signature{ "int32", "opaque*", "struct8*", "int32*" };
    QTest::newRow("flyout") << SignatureOf(decltype(AEGP_PanelFunctions1::PopulateFlyout)())
                            << Signature{ "int32", "opaque*", "struct24*", "int32*" };
    QTest::newRow("flyout command")
        << SignatureOf(decltype(AEGP_PanelFunctions1::DoFlyoutCommand)())
        << Signature{ "int32", "opaque*", "int32" };
    QTest::newRow("acquire") << SignatureOf(decltype(SPBasicSuite::AcquireSuite)())
                             << Signature{ "int32", "const char8*", "int32", "const void**" };
    QTest::newRow("release") << SignatureOf(decltype(SPBasicSuite::ReleaseSuite)())
                             << Signature{ "int32", "const char8*", "int32" };
}

void TestHostApiFacts::theHooksTakeTheirArgumentsInTheHostsOrder()
{
    QFETCH(QList<QByteArray>, declared);
    QFETCH(QList<QByteArray>, fact);
    QCOMPARE(declared, fact);
}

void TestHostApiFacts::everyTableInUseIsPublished()
{
    const auto published = Facts("published-suites.csv");
    QCOMPARE(published.size(), 144);
    QList<QByteArray> pairs;
    for (const auto &suite : published) {
        if (suite["used"] == "yes")
            pairs << suite["suite_name"] + ' ' + suite["version"] + ' ' + suite["struct_number"];
    }
    QCOMPARE(pairs.size(), 16);
    for (const auto &fact : Facts("suites.csv"))
        QVERIFY(pairs.contains(
            fact["suite_name"] + ' ' + fact["version"] + ' ' + fact["struct_number"]));
}

VN_TEST_MAIN(TestHostApiFacts)
#include "tst_hostapi_facts.moc"

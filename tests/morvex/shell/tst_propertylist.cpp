#include "shell/PropertyList.h"

#include "testing/TestMain.h"

/// The list byte for byte. The listing below is written by hand; the code that builds the list has
/// no part in it.
class TestPropertyList : public QObject
{
    Q_OBJECT

private slots:
    void aPartOfTheListStandsAtItsOffset_data();
    void aPartOfTheListStandsAtItsOffset();
    void thePartsCoverTheListWithoutAGap();
    void theResourceIsNumber16000();
};

namespace {

struct Part
{
    int offset;
    const char *bytes; // in hex
    const char *meaning;
};

const Part kParts[] = {
    { 0, "0100", "header word" },
    { 2, "00000000", "list version" },
    { 6, "05000000", "number of properties" },

    { 10, "4d494238", "kind: 8BIM reversed" },
    { 14, "646e696b", "kind: key reversed" },
    { 18, "00000000", "kind: identifier" },
    { 22, "04000000", "kind: length" },
    { 26, "78674541", "kind: AEgx reversed" },

    { 30, "4d494238", "name: 8BIM reversed" },
    { 34, "656d616e", "name: key reversed" },
    { 38, "00000000", "name: identifier" },
    { 42, "0c000000", "name: length 12" },
    { 46, "08", "name: length byte 8" },
    { 47, "766e4d6f72766578", "name: vnMorvex" },
    { 55, "000000", "name: padding" },

    { 58, "4d494238", "catg: 8BIM reversed" },
    { 62, "67746163", "catg: key reversed" },
    { 66, "00000000", "catg: identifier" },
    { 70, "10000000", "catg: length 16" },
    { 74, "0e", "catg: length byte 14" },
    { 75, "47656e6572616c20506c7567696e", "catg: General Plugin" },
    { 89, "00", "catg: padding" },

    { 90, "4d494238", "vers: 8BIM reversed" },
    { 94, "73726576", "vers: key reversed" },
    { 98, "00000000", "vers: identifier" },
    { 102, "04000000", "vers: length" },
    { 106, "00000300", "vers: 0x00030000" },

    { 110, "4d494238", "8664: 8BIM reversed" },
    { 114, "34363638", "8664: key reversed" },
    { 118, "00000000", "8664: identifier" },
    { 122, "10000000", "8664: length 16" },
    { 126, "456e747279506f696e7446756e63", "8664: EntryPointFunc" },
    { 140, "0000", "8664: terminator and padding" },
};

QByteArray List()
{
    return QByteArray(reinterpret_cast<const char *>(kPropertyList.data()),
        static_cast<int>(kPropertyList.size()));
}

} // namespace

void TestPropertyList::aPartOfTheListStandsAtItsOffset_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("bytes");
    for (const Part &part : kParts)
        QTest::newRow(part.meaning) << part.offset << QByteArray(part.bytes);
}

void TestPropertyList::aPartOfTheListStandsAtItsOffset()
{
    QFETCH(int, offset);
    QFETCH(QByteArray, bytes);
    QCOMPARE(List().mid(offset, bytes.size() / 2).toHex(), bytes);
}

void TestPropertyList::thePartsCoverTheListWithoutAGap()
{
    QByteArray hex;
    for (const Part &part : kParts) {
        QCOMPARE(hex.size() / 2, part.offset);
        hex += part.bytes;
    }
    QCOMPARE(hex.size() / 2, 142);
    QCOMPARE(List().toHex(), hex);
}

void TestPropertyList::theResourceIsNumber16000()
{
    QCOMPARE(QByteArray(kPropertyListResourceType), QByteArray("PIPL"));
    QCOMPARE(kPropertyListResourceId, 16000);
    QCOMPARE(kPropertyListLanguage, 1033);
}

VN_TEST_MAIN(TestPropertyList)
#include "tst_propertylist.moc"

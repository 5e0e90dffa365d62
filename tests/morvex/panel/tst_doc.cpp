#include "T_Types/T_QtEdit.h"
#include "T_Types/T_QtEditTab.h"
#include "T_Types/T_Registry.h"
#include "T_Types/T_Undo.h"
#include "panel/Doc.h"
#include "panel/DocMirror.h"
#include "testing/Platform.h"
#include "testing/RepaintCounter.h"
#include "testing/TestMain.h"
#include "vnAE/vipLi.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStyleFactory>

#include <algorithm>

namespace {

/// A document's dock of two rows, as the panel has it.
struct DockOfDoc
{
    DockOfDoc() : dock(nullptr, /*rows=*/2)
    {
        T_Undo::Instance()->mEnabled = false;
        dock.SetStructs(&doc);
        dock.show();
        shown = QTest::qWaitForWindowExposed(&dock);
    }

    /// The editors of a field, in the order of their declarations.
    template <class Input>
    QList<Input *> Inputs(const void *field) const
    {
        QList<Input *> found;
        for (const T_QtEdit *edit : dock.findChildren<T_QtEdit *>()) {
            if (edit->GetVar()->mData == field)
                found << edit->findChild<Input *>();
        }
        return found;
    }

    Doc doc;
    KDockPannel dock; // goes before the document
    bool shown = false;
};

/// "row,column label" of each editor on a tab.
QStringList Places(const KDockPannel &dock, int tab)
{
    QStringList places;
    const auto *grid = qobject_cast<QGridLayout *>(dock.widget(tab)->layout());
    for (int i = 0; i < grid->count(); ++i) {
        int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
        grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
        if (const auto *edit = qobject_cast<T_QtEdit *>(grid->itemAt(i)->widget()))
            places
                << QStringLiteral("%1,%2 %3").arg(row).arg(column).arg(edit->GetVar()->GetName());
    }
    return places;
}

QStringList Lines(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1String(" | "));
}

} // namespace

class TestDoc : public QObject
{
    Q_OBJECT

private slots:
    void aFreshDocumentHasItsStartValues();
    void theDeclarationsStandInTheirOrder();
    void theFieldsStandInTheirOrder();
    void aDocumentIsADocAndAStructureAndNoRegisteredClass();
    void thereIsOneDocument();
    void settingTheRowCallsNothing();
    void withoutACompositionTheColumnIsStoredAndTheLibraryHasNoLayer();
    void theDockShowsFiveTabsOfTwoRows();
    void theCombosOfferTheirLists();
    void theTwoKeyBoxesShowOneField();
    void aNameIsTypedOnTheNewColTab();
    void aButtonIsToldByItsAddress();
    void withoutALayerTheMirrorFallsBack();
    void twoRowsFitTheFixedHeight_data();
    void twoRowsFitTheFixedHeight();
    void theNameAndTheTypeLineUp();
    void updateAllWithNothingChangedRequestsNoRepaint();
};

void TestDoc::aFreshDocumentHasItsStartValues()
{
    const Doc doc;
    QCOMPARE(doc.GetName(), QStringLiteral("Dashboard"));
    QCOMPARE(doc.colWidth, 48);
    QCOMPARE(doc.GetRow(), 0);
    QCOMPARE(doc.GetCol(), 0);
    QCOMPARE(doc.name, QString());
    QCOMPARE(doc.typeList.at(doc.typeIndex), QStringLiteral("SEQUENCE"));
    QCOMPARE(doc.extList.at(doc.extIndex), QStringLiteral("png"));
    QCOMPARE(doc.typeList, Lines("SEQUENCE | FIXE"));
    QCOMPARE(doc.extList, Lines("png | tga | swf | mov"));
    QCOMPARE(doc.syncIma, false);
    QCOMPARE(doc.syncColumn, false);
    QCOMPARE(doc.sheetFlag, false);
    for (const qint32 value : { doc.posX, doc.posY, doc.scale, doc.rotation, doc.opacity, doc.blur,
             doc.lightness, doc.saturation, doc.hue })
        QCOMPARE(value, 0);
    for (const bool value : { doc.keyPos, doc.keyPosBis, doc.keyScale, doc.keyRotation })
        QCOMPARE(value, false);
}

void TestDoc::theDeclarationsStandInTheirOrder()
{
    Doc doc;
    struct Declared
    {
        quint32 type;
        const char *label;
        void *field;
        quint32 gadget;
        QStringList *items;
    };
    const Declared expected[] = {
        { TV_ONGLET, "Layer", nullptr, TG_TAB, nullptr },
        { TV_BOUTON, "<< (move left)", &doc.btMoveLeft, TG_DEFAULT, nullptr },
        { TV_BOUTON, ">> (move right)", &doc.btMoveRight, TG_DEFAULT, nullptr },
        { TV_ONGLET, "NewCol", nullptr, TG_TAB, nullptr },
        { TV_QSTRING, "Name", &doc.name, TG_DEFAULT, nullptr },
        { TV_INT, "Type", &doc.typeIndex, TG_COMBO, &doc.typeList },
        { TV_INT, "Ext", &doc.extIndex, TG_COMBO, &doc.extList },
        { TV_BOUTON, "New Col", &doc.btNewCol, TG_DEFAULT, nullptr },
        { TV_ONGLET, "Transform", nullptr, TG_TAB, nullptr },
        { TV_INT, "Pos. X", &doc.posX, TG_DEFAULT, nullptr },
        { TV_INT, "Pos. Y", &doc.posY, TG_DEFAULT, nullptr },
        { TV_BOOL, "Key Pos", &doc.keyPos, TG_DEFAULT, nullptr },
        { TV_BOOL, "Key Pos", &doc.keyPos, TG_DEFAULT, nullptr },
        { TV_INT, "Scale", &doc.scale, TG_DEFAULT, nullptr },
        { TV_INT, "Rotation", &doc.rotation, TG_DEFAULT, nullptr },
        { TV_BOOL, "Key Scale", &doc.keyScale, TG_DEFAULT, nullptr },
        { TV_BOOL, "Key Rotation", &doc.keyRotation, TG_DEFAULT, nullptr },
        { TV_ONGLET, "Effect", nullptr, TG_TAB, nullptr },
        { TV_INT, "Opacity", &doc.opacity, TG_DEFAULT, nullptr },
        { TV_INT, "Blur", &doc.blur, TG_DEFAULT, nullptr },
        { TV_INT, "Hue", &doc.hue, TG_DEFAULT, nullptr },
        { TV_INT, "Saturation", &doc.saturation, TG_DEFAULT, nullptr },
        { TV_INT, "Lightness", &doc.lightness, TG_DEFAULT, nullptr },
        { TV_ONGLET, "Setup", nullptr, TG_TAB, nullptr },
        { TV_BOOL, "Sync Column with AE", &doc.syncColumn, TG_DEFAULT, nullptr },
        { TV_BOOL, "Sync Ima with AE", &doc.syncIma, TG_DEFAULT, nullptr },
    };
    doc.Rewind();
    for (const Declared &declared : expected) {
        const T_Var *var = doc.NextVar();
        QVERIFY2(var, declared.label);
        QCOMPARE(var->GetName(), QString::fromLatin1(declared.label));
        QCOMPARE(var->mType, declared.type);
        QCOMPARE(var->mData, declared.field);
        QCOMPARE(var->mGadget, declared.gadget);
        QCOMPARE(var->mEnumList, declared.items);
    }
    QVERIFY(!doc.NextVar());
}

/// Fields and declarations have orders of their own.
void TestDoc::theFieldsStandInTheirOrder()
{
    const Doc doc;
    const auto place = [](const auto &field) { return reinterpret_cast<quintptr>(&field); };
    const QList<quintptr> places{ place(doc.mCursor), place(doc.extIndex), place(doc.extList),
        place(doc.typeIndex), place(doc.typeList), place(doc.row), place(doc.col),
        place(doc.colWidth), place(doc.name), place(doc.posX), place(doc.posY), place(doc.scale),
        place(doc.rotation), place(doc.keyPos), place(doc.keyPosBis), place(doc.keyScale),
        place(doc.keyRotation), place(doc.opacity), place(doc.blur), place(doc.lightness),
        place(doc.saturation), place(doc.hue), place(doc.syncIma), place(doc.syncColumn),
        place(doc.btRefresh), place(doc.btShowA), place(doc.btShowB), place(doc.btMoveLeft),
        place(doc.btMoveRight), place(doc.btRefreshBis), place(doc.btLoadExpo), place(doc.btCenter),
        place(doc.btNewCol), place(doc.btProjectFolder), place(doc.sheetFlag) };
    QVERIFY(std::is_sorted(places.begin(), places.end()));
}

void TestDoc::aDocumentIsADocAndAStructureAndNoRegisteredClass()
{
    const Doc doc;
    QVERIFY(doc.IsA(typeid(Doc)));
    QVERIFY(doc.IsA(typeid(T_Struct)));
    QVERIFY(doc.IsA(typeid(T_Obj)));
    QVERIFY(!doc.IsA(typeid(T_Var)));
    QVERIFY(doc.IsExactly(typeid(Doc)));
    QVERIFY(doc.IsStruct());
    QCOMPARE(doc.GetClassName(), QStringLiteral("Doc"));
    QVERIFY(!T_New(QStringLiteral("Doc")));
}

void TestDoc::thereIsOneDocument()
{
    QVERIFY(GetDoc());
    QCOMPARE(GetDoc(), GetDoc());
    QCOMPARE(GetDoc()->colWidth, 48);
}

void TestDoc::settingTheRowCallsNothing()
{
    Doc doc;
    vipLi *library = GetVipLi();
    QVERIFY(!library->BasicSuite); // a host call would end the process
    qstrcpy(library->CompoName, "Scene 7");
    doc.SetRow(-1);
    QCOMPARE(doc.GetRow(), -1);
    doc.SetRow(1499);
    QCOMPARE(doc.GetRow(), 1499);
    library->CompoName[0] = '\0';
}

void TestDoc::withoutACompositionTheColumnIsStoredAndTheLibraryHasNoLayer()
{
    Doc doc;
    doc.SetCol(4);
    QCOMPARE(doc.GetCol(), 4);
    doc.SetCol(-1);
    QCOMPARE(doc.GetCol(), -1);
    QVERIFY(!GetVipLi()->Layer);
    QVERIFY(!doc.GetCurrentLayer());
}

void TestDoc::theDockShowsFiveTabsOfTwoRows()
{
    const DockOfDoc shown;
    QStringList titles;
    for (int tab = 0; tab < shown.dock.count(); ++tab)
        titles << shown.dock.tabText(tab);
    QCOMPARE(titles, Lines("Layer | NewCol | Transform | Effect | Setup"));
    QCOMPARE(Places(shown.dock, 0), Lines("0,0 << (move left) | 1,0 >> (move right)"));
    QCOMPARE(Places(shown.dock, 1), Lines("0,0 Name | 1,0 Type | 0,1 Ext | 1,1 New Col"));
    QCOMPARE(Places(shown.dock, 2),
        Lines("0,0 Pos. X | 1,0 Pos. Y | 0,1 Key Pos | 1,1 Key Pos | 0,2 Scale | 1,2 Rotation"
              " | 0,3 Key Scale | 1,3 Key Rotation"));
    QCOMPARE(Places(shown.dock, 3),
        Lines("0,0 Opacity | 1,0 Blur | 0,1 Hue | 1,1 Saturation | 0,2 Lightness"));
    QCOMPARE(Places(shown.dock, 4), Lines("0,0 Sync Column with AE | 1,0 Sync Ima with AE"));
}

void TestDoc::theCombosOfferTheirLists()
{
    DockOfDoc shown;
    auto *ext = shown.Inputs<QComboBox>(&shown.doc.extIndex).value(0);
    QVERIFY(ext);
    QVERIFY(T_QtEdit::SameItems(ext, shown.doc.extList));
    QTest::keyClick(ext, Qt::Key_Down);
    QCOMPARE(shown.doc.extIndex, 1);
    auto *type = shown.Inputs<QComboBox>(&shown.doc.typeIndex).value(0);
    QVERIFY(type);
    QTest::keyClick(type, Qt::Key_End);
    QCOMPARE(shown.doc.typeIndex, 1);
    QCOMPARE(type->currentText(), QStringLiteral("FIXE"));
}

void TestDoc::theTwoKeyBoxesShowOneField()
{
    DockOfDoc shown;
    shown.dock.setCurrentIndex(2);
    const QList<QCheckBox *> boxes = shown.Inputs<QCheckBox>(&shown.doc.keyPos);
    QCOMPARE(boxes.size(), 2);
    QTest::mouseClick(boxes.at(1), Qt::LeftButton, {}, QPoint(8, boxes.at(1)->height() / 2));
    QCOMPARE(shown.doc.keyPos, true);
    QVERIFY(!boxes.at(0)->isChecked()); // not before the next refresh
    shown.dock.UpdateAll();
    QVERIFY(boxes.at(0)->isChecked());
    QVERIFY(boxes.at(1)->isChecked());
}

void TestDoc::aNameIsTypedOnTheNewColTab()
{
    DockOfDoc shown;
    shown.dock.setCurrentIndex(1);
    auto *line = shown.Inputs<QLineEdit>(&shown.doc.name).value(0);
    QVERIFY(line);
    QTest::keyClicks(line, QStringLiteral("walk"));
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(shown.doc.name, QStringLiteral("walk"));
}

void TestDoc::aButtonIsToldByItsAddress()
{
    DockOfDoc shown;
    QList<void *> told;
    connect(&shown.dock, &KDockPannel::SignalValueChanged,
        [&told](const T_Var *var) { told << var->mData; });
    QTest::ignoreMessage(QtWarningMsg, "T_Struct::OnButtonClicked");
    QTest::mouseClick(shown.Inputs<QPushButton>(&shown.doc.btMoveRight).value(0), Qt::LeftButton);
    QCOMPARE(told, QList<void *>({ &shown.doc.btMoveRight }));
    shown.dock.setCurrentIndex(1);
    QTest::ignoreMessage(QtWarningMsg, "T_Struct::OnButtonClicked");
    QTest::mouseClick(shown.Inputs<QPushButton>(&shown.doc.btNewCol).value(0), Qt::LeftButton);
    QCOMPARE(told, QList<void *>({ &shown.doc.btMoveRight, &shown.doc.btNewCol }));
}

/// No row, no column, no composition: nothing to read, and nothing that crashes.
void TestDoc::withoutALayerTheMirrorFallsBack()
{
    Doc doc;
    doc.SetRow(-1);
    doc.SetCol(-1);
    doc.posX = doc.posY = doc.scale = doc.rotation = doc.opacity = 7;
    doc.blur = doc.hue = doc.lightness = doc.saturation = 8;
    doc.keyPos = doc.keyPosBis = doc.keyScale = doc.keyRotation = true;
    doc.name = QStringLiteral("walk");
    doc.syncIma = true;
    ReadDocFromHost(*GetVipLi(), doc);
    for (const qint32 value : { doc.posX, doc.posY, doc.scale, doc.rotation, doc.opacity })
        QCOMPARE(value, -1); // what a failed read of a stream gives
    for (const qint32 value : { doc.blur, doc.hue, doc.lightness, doc.saturation })
        QCOMPARE(value, 8); // a failed read of an effect leaves its field alone
    for (const bool value : { doc.keyPos, doc.keyPosBis, doc.keyScale, doc.keyRotation })
        QCOMPARE(value, false);
    QCOMPARE(doc.name, QStringLiteral("walk")); // is no mirror of anything
    QCOMPARE(doc.syncIma, true);
    QCOMPARE(doc.GetRow(), -1);
}

void TestDoc::twoRowsFitTheFixedHeight_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<bool>("atEase"); // each input has the height that it wishes
    if (testing::PanelStyle() == QLatin1String("plastique"))
        QTest::newRow("the panel's style") << testing::PanelStyle() << true;
    QTest::newRow("its successor, squeezed but readable") << QStringLiteral("fusion") << false;
}

void TestDoc::twoRowsFitTheFixedHeight()
{
    QFETCH(QString, style);
    QFETCH(bool, atEase);
    QStyle *worn = QStyleFactory::create(style);
    QVERIFY(worn);
    QApplication::setStyle(worn);
    DockOfDoc shown;
    QFont font = shown.dock.font();
    font.setPointSize(8); // the panel's
    shown.dock.setFont(font);
    shown.dock.resize(830, shown.dock.height());
    QCOMPARE(shown.dock.height(), 84);
    for (int tab = 0; tab < shown.dock.count(); ++tab) {
        shown.dock.setCurrentIndex(tab);
        QCoreApplication::processEvents();
        const QWidget *page = shown.dock.widget(tab);
        for (const T_QtEdit *edit : page->findChildren<T_QtEdit *>()) {
            const QByteArray label = edit->GetVar()->GetName().toLatin1();
            QVERIFY2(page->rect().contains(edit->geometry()), label);
            for (const auto *input :
                edit->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
                QVERIFY2(edit->rect().contains(input->geometry()), label);
                const int wish = atEase ? input->minimumSizeHint().height()
                                        : input->fontMetrics().height() + 4;
                QVERIFY2(input->height() >= wish, label);
                QVERIFY2(input->width() >= input->minimumSizeHint().width(), label);
            }
        }
    }
}

/// On the NewCol tab the label of the combo box stood in the middle, far from that of the name.
void TestDoc::theNameAndTheTypeLineUp()
{
    DockOfDoc shown;
    shown.dock.resize(830, shown.dock.height());
    shown.dock.setCurrentIndex(1);
    QCoreApplication::processEvents();
    const QLineEdit *name = shown.Inputs<QLineEdit>(&shown.doc.name).value(0);
    const QComboBox *type = shown.Inputs<QComboBox>(&shown.doc.typeIndex).value(0);
    QCOMPARE(name->geometry().right(), type->geometry().right());
    for (const QWidget *input :
        { static_cast<const QWidget *>(name), static_cast<const QWidget *>(type) }) {
        const auto *label = input->parentWidget()->findChild<MyLabel *>();
        QCOMPARE(label->x(), 0);
        QCOMPARE(label->width(), label->sizeHint().width());
    }
}

void TestDoc::updateAllWithNothingChangedRequestsNoRepaint()
{
    DockOfDoc shown;
    QVERIFY(shown.shown);
    testing::RepaintCounter repaints;
    for (int tab = 0; tab < shown.dock.count(); ++tab) {
        shown.dock.setCurrentIndex(tab);
        repaints.Take();
        shown.dock.UpdateAll();
        QCOMPARE(repaints.Take(), 0);
    }
    shown.doc.syncIma = true; // on the tab that is on top
    shown.dock.UpdateAll();
    QVERIFY(repaints.Take() > 0);
}

VN_TEST_MAIN(TestDoc)

#include "tst_doc.moc"

#include "testing/TestMain.h"
#include "vnQT/wToolBox.h"

#include <QCheckBox>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

namespace {

/// One section in a box, on show, with a look at what it shows.
class Section
{
public:
    Section(const QString &titleText, QWidget *content, QAbstractButton *check)
        : item(new ToolItem(titleText, content, check))
    {
        box.AddItem(item);
        box.resize(300, 240);
        box.show();
        title = item->findChild<TitleItem *>();
        frame = item->findChild<QFrame *>(QString(), Qt::FindDirectChildrenOnly);
    }

    QWidget *RowEntry(int index) const { return title->layout()->itemAt(index)->widget(); }

    /// "closed >", "open v", "closed" and the like: the frame and the arrows.
    QString Look() const
    {
        QString look = frame->isVisible() ? QStringLiteral("open") : QStringLiteral("closed");
        if (RowEntry(0)->isVisible())
            look += QStringLiteral(" >");
        if (RowEntry(1)->isVisible())
            look += QStringLiteral(" v");
        return look;
    }

    /// Presses where a widget's point is on the window, as the window system does.
    void Click(QWidget *widget, const QPoint &pos, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(box.windowHandle(), button, Qt::NoModifier, widget->mapTo(&box, pos));
    }
    void Click(QWidget *widget, Qt::MouseButton button = Qt::LeftButton)
    {
        Click(widget, widget->rect().center(), button);
    }
    void ClickTitle(Qt::MouseButton button = Qt::LeftButton)
    {
        Click(title, title->rect().center(), button);
    }

    WToolBox box;
    ToolItem *item;
    TitleItem *title;
    QFrame *frame;
};

/// A content of 200 by 100, bare but for a button and an edit field.
struct Content : QWidget
{
    Content()
    {
        setFixedSize(200, 100);
        button->setGeometry(10, 10, 80, 20);
        edit->setGeometry(10, 50, 80, 20);
    }
    QPushButton *button = new QPushButton(QStringLiteral("button"), this);
    QLineEdit *edit = new QLineEdit(this);
    const QPoint bareSpot{ 150, 80 };
};

QCheckBox *CheckBox(bool isChecked)
{
    auto *check = new QCheckBox;
    check->setChecked(isChecked);
    return check;
}

/// Rows of an image, "#" for opaque black, "." for fully transparent, "?" for anything else.
QStringList Drawing(const QImage &image)
{
    QStringList rows;
    for (int y = 0; y < image.height(); ++y) {
        QString row;
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            const bool isBlack = color == QColor(Qt::black);
            row += isBlack ? QLatin1Char('#') : QLatin1Char(color.alpha() == 0 ? '.' : '?');
        }
        rows << row;
    }
    return rows;
}

} // namespace

class TestToolBox : public QObject
{
    Q_OBJECT

private slots:
    void theArrowsAreDrawnPixelByPixel_data();
    void theArrowsAreDrawnPixelByPixel();

    void aSectionStartsClosed();
    void theRowHoldsArrowsCheckAndTitle_data();
    void theRowHoldsArrowsCheckAndTitle();
    void rowAndFrameLieEdgeToEdge();

    void aPressOnTheRowOpensAndCloses_data();
    void aPressOnTheRowOpensAndCloses();
    void sectionsOpenIndependently();
    void aBareSpotOfTheContentClosesAnInputDoesNot();
    void aSectionOfAHiddenBoxKeepsItsState();

    void withItsCheckOffASectionStaysClosedAndShowsNoArrow();
    void checkingByMouseOpens();
    void uncheckingAnOpenSectionClosesItAtOnce();
    void aSectionClosedByItsRowStaysCheckable();
    void setOpenAloneDoesNotAskTheCheck();

    void threeSectionsLeaveFourEntriesTheStretchLast();
    void sectionsStayPackedAtTheTop();
    void openCloseIsASlot();
};

void TestToolBox::theArrowsAreDrawnPixelByPixel_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("rowEntry");
    QTest::addColumn<QString>("pixels");

    QTest::newRow("right") << QStringLiteral(":/images/arrow_right.png") << 0
                           << QStringLiteral("...#......."
                                             "...##......"
                                             "...###....."
                                             "...####...."
                                             "...#####..."
                                             "...######.."
                                             "...#####..."
                                             "...####...."
                                             "...###....."
                                             "...##......"
                                             "...#.......");
    QTest::newRow("down") << QStringLiteral(":/images/arrow_down.png") << 1
                          << QStringLiteral("###########"
                                            ".#########."
                                            "..#######.."
                                            "...#####..."
                                            "....###...."
                                            ".....#....."
                                            "..........."
                                            "..........."
                                            "..........."
                                            "..........."
                                            "...........");
}

void TestToolBox::theArrowsAreDrawnPixelByPixel()
{
    QFETCH(const QString, path);
    QFETCH(const int, rowEntry);
    Section section(QStringLiteral("title"), new QLabel, nullptr); // registers the images

    const QImage image(path);
    QCOMPARE(image.size(), QSize(11, 11));
    QCOMPARE(image.colorCount(), 2); // a palette of two, the second one transparent
    QCOMPARE(qAlpha(image.color(1)), 0);
    QTEST(Drawing(image).join(QString()), "pixels");

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(8), QByteArray("\x89PNG\r\n\x1a\n"));

    const auto *label = qobject_cast<QLabel *>(section.RowEntry(rowEntry));
    QVERIFY(label);
    QTEST(Drawing(label->pixmap(Qt::ReturnByValue).toImage()).join(QString()), "pixels");
}

void TestToolBox::aSectionStartsClosed()
{
    auto *content = new Content;
    Section section(QStringLiteral("title"), content, nullptr);

    QCOMPARE(section.Look(), QStringLiteral("closed >"));
    QCOMPARE(section.frame->frameStyle(), 22);
    QCOMPARE(content->parentWidget(), section.frame);
    QVERIFY(!content->isVisible());
}

void TestToolBox::theRowHoldsArrowsCheckAndTitle_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("hasCheck");
    QTest::addColumn<QStringList>("entries");

    const QString label = QStringLiteral("QLabel");
    const QString check = QStringLiteral("QCheckBox");
    const QString stretch = QStringLiteral("stretch");
    QTest::newRow("title") << QStringLiteral("Log") << false
                           << QStringList{ label, label, label, stretch };
    QTest::newRow("check and title")
        << QStringLiteral("Log") << true << QStringList{ label, label, check, label, stretch };
    QTest::newRow("an empty title has no label")
        << QString() << true << QStringList{ label, label, check, stretch };
    QTest::newRow("arrows alone") << QString() << false << QStringList{ label, label, stretch };
}

void TestToolBox::theRowHoldsArrowsCheckAndTitle()
{
    QFETCH(const QString, title);
    QFETCH(const bool, hasCheck);
    Section section(title, new QLabel, hasCheck ? CheckBox(true) : nullptr);

    QStringList entries;
    const QLayout *row = section.title->layout();
    for (int i = 0; i < row->count(); ++i) {
        const QWidget *widget = row->itemAt(i)->widget();
        entries << (widget ? QString::fromLatin1(widget->metaObject()->className())
                           : QStringLiteral("stretch"));
    }

    QTEST(entries, "entries");
    if (!title.isEmpty())
        QCOMPARE(qobject_cast<QLabel *>(section.RowEntry(row->count() - 2))->text(), title);
    for (const int arrow : { 0, 1 }) {
        QCOMPARE(section.RowEntry(arrow)->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(section.RowEntry(arrow)->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
    }
}

void TestToolBox::rowAndFrameLieEdgeToEdge()
{
    Section section(QStringLiteral("title"), new Content, nullptr);
    section.ClickTitle();
    QTest::qWait(0); // the layout settles

    for (const QWidget *widget : { static_cast<QWidget *>(section.item),
             static_cast<QWidget *>(section.frame), static_cast<QWidget *>(section.title) }) {
        QCOMPARE(widget->layout()->contentsMargins(), QMargins());
        QCOMPARE(widget->layout()->spacing(), 0);
    }
    QCOMPARE(section.title->geometry().bottom() + 1, section.frame->geometry().top());
    QCOMPARE(section.title->width(), section.frame->width());
}

void TestToolBox::aPressOnTheRowOpensAndCloses_data()
{
    QTest::addColumn<Qt::MouseButtons>("button");

    QTest::newRow("left") << Qt::MouseButtons(Qt::LeftButton);
    QTest::newRow("middle") << Qt::MouseButtons(Qt::MiddleButton);
    QTest::newRow("right") << Qt::MouseButtons(Qt::RightButton);
}

void TestToolBox::aPressOnTheRowOpensAndCloses()
{
    QFETCH(const Qt::MouseButtons, button);
    const auto one = static_cast<Qt::MouseButton>(static_cast<int>(button));
    Section section(QStringLiteral("title"), new Content, nullptr);

    section.ClickTitle(one);
    QCOMPARE(section.Look(), QStringLiteral("open v"));
    section.Click(section.RowEntry(2), one); // the title's label
    QCOMPARE(section.Look(), QStringLiteral("closed >"));
    section.Click(section.RowEntry(0), one); // the arrow
    QCOMPARE(section.Look(), QStringLiteral("open v"));
    section.Click(section.title, section.title->rect().bottomRight(), one);
    QCOMPARE(section.Look(), QStringLiteral("closed >"));
}

void TestToolBox::sectionsOpenIndependently()
{
    Section first(QStringLiteral("first"), new Content, nullptr);
    auto *second = new ToolItem(QStringLiteral("second"), new Content, nullptr);
    first.box.AddItem(second);
    first.box.resize(300, 400);
    QTest::qWait(0);
    auto *secondFrame = second->findChild<QFrame *>(QString(), Qt::FindDirectChildrenOnly);

    first.ClickTitle();
    QTest::qWait(0);
    first.Click(second->findChild<TitleItem *>());
    QVERIFY(first.frame->isVisible());
    QVERIFY(secondFrame->isVisible());
    QTest::qWait(0);
    first.ClickTitle();
    QVERIFY(!first.frame->isVisible());
    QVERIFY(secondFrame->isVisible());
}

void TestToolBox::aBareSpotOfTheContentClosesAnInputDoesNot()
{
    auto *content = new Content;
    Section section(QStringLiteral("title"), content, nullptr);
    section.ClickTitle();
    QTest::qWait(0);

    section.Click(content->button);
    section.Click(content->edit);
    QCOMPARE(section.Look(), QStringLiteral("open v"));
    section.Click(content, content->bareSpot);
    QCOMPARE(section.Look(), QStringLiteral("closed >"));
}

// The report page stands in a tab: what is opened while another tab is on top was opened twice.
void TestToolBox::aSectionOfAHiddenBoxKeepsItsState()
{
    Section section(QStringLiteral("title"), new Content, nullptr);
    section.box.hide();
    section.title->OnOpenClose();
    section.box.show();
    QCOMPARE(section.Look(), QStringLiteral("open v"));
    section.box.hide();
    section.title->OnOpenClose();
    section.box.show();
    QCOMPARE(section.Look(), QStringLiteral("closed >"));
}

void TestToolBox::withItsCheckOffASectionStaysClosedAndShowsNoArrow()
{
    auto *check = CheckBox(false);
    Section section(QStringLiteral("title"), new Content, check);
    QCOMPARE(section.Look(), QStringLiteral("closed"));

    section.ClickTitle();
    QCOMPARE(section.Look(), QStringLiteral("closed"));
    section.Click(section.RowEntry(3)); // the title's label
    QCOMPARE(section.Look(), QStringLiteral("closed"));
    section.ClickTitle(Qt::RightButton);
    QCOMPARE(section.Look(), QStringLiteral("closed"));
    QVERIFY(!check->isChecked());
}

void TestToolBox::checkingByMouseOpens()
{
    auto *check = CheckBox(false);
    Section section(QStringLiteral("title"), new Content, check);
    section.Click(check);
    QVERIFY(check->isChecked());
    QCOMPARE(section.Look(), QStringLiteral("open v"));
}

void TestToolBox::uncheckingAnOpenSectionClosesItAtOnce()
{
    auto *check = CheckBox(true);
    Section section(QStringLiteral("title"), new Content, check);
    QCOMPARE(section.Look(), QStringLiteral("closed >"));
    section.ClickTitle();
    QCOMPARE(section.Look(), QStringLiteral("open v"));

    section.Click(check);
    QVERIFY(!check->isChecked());
    QCOMPARE(section.Look(), QStringLiteral("closed"));
}

void TestToolBox::aSectionClosedByItsRowStaysCheckable()
{
    auto *check = CheckBox(true);
    Section section(QStringLiteral("title"), new Content, check);
    section.ClickTitle();
    section.ClickTitle();
    QCOMPARE(section.Look(), QStringLiteral("closed >"));
    QVERIFY(check->isChecked());
    section.Click(check); // off
    QCOMPARE(section.Look(), QStringLiteral("closed"));
    section.Click(check); // on again
    QCOMPARE(section.Look(), QStringLiteral("open v"));
}

void TestToolBox::setOpenAloneDoesNotAskTheCheck()
{
    Section section(QStringLiteral("title"), new Content, CheckBox(false));
    section.title->SetOpen(true);
    QCOMPARE(section.Look(), QStringLiteral("open"));
    section.ClickTitle(); // a click does
    QCOMPARE(section.Look(), QStringLiteral("closed"));
}

void TestToolBox::threeSectionsLeaveFourEntriesTheStretchLast()
{
    WToolBox box;
    const QLayout *stack = static_cast<QWidget &>(box).layout();
    QVector<ToolItem *> items;
    for (int i = 0; i < 3; ++i) {
        items << new ToolItem(QString::number(i), new QLabel, nullptr);
        box.AddItem(items.last());
        QCOMPARE(stack->count(), i + 2);
        QVERIFY(stack->itemAt(i + 1)->spacerItem());
        QVERIFY(stack->itemAt(i + 1)->expandingDirections().testFlag(Qt::Vertical));
    }
    for (int i = 0; i < 3; ++i)
        QCOMPARE(stack->itemAt(i)->widget(), static_cast<QWidget *>(items[i]));
    QVERIFY(!box.parentWidget());
}

void TestToolBox::sectionsStayPackedAtTheTop()
{
    Section first(QStringLiteral("first"), new Content, nullptr);
    auto *second = new ToolItem(QStringLiteral("second"), new Content, nullptr);
    first.box.AddItem(second);
    first.box.resize(300, 600);
    QTest::qWait(0);
    QCOMPARE(first.item->height(), first.item->sizeHint().height());
    QVERIFY(second->geometry().bottom() < 80);

    first.ClickTitle();
    QTest::qWait(0);
    QVERIFY(second->geometry().top() > first.item->geometry().bottom());
    QVERIFY(second->geometry().bottom() < 80 + 110);
}

void TestToolBox::openCloseIsASlot()
{
    const int index = TitleItem::staticMetaObject.indexOfMethod("OnOpenClose()");
    QVERIFY(index >= 0);
    QCOMPARE(TitleItem::staticMetaObject.method(index).methodType(), QMetaMethod::Slot);
}

VN_TEST_MAIN(TestToolBox)
#include "tst_toolbox.moc"

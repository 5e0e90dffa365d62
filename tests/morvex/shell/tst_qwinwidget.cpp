#include "DockFixture.h"
#include "testing/TestMain.h"

using testing::Container;

/// The widget in the host's window, apart from focus and dialogs.
class TestQWinWidget : public QObject
{
    Q_OBJECT

private slots:
    void itBecomesAHiddenChildAndIsToldOfItsEmbedding();
    void withoutAWindowNothingIsEmbedded();
    void showCenteredPutsItsCornerInTheMiddleOfTheWindow();
    void anObjectTakesItAlong();
    void aWidgetOfItsOwnKindTakesItAlong();
    void aNativeMessageIsNeverUsedUp();
};

namespace {

class EmbeddingWatch : public QObject
{
public:
    EmbeddingWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::EmbeddingControl) {
            ++count;
            spontaneous = spontaneous || event->spontaneous();
        }
        return false;
    }
    int count = 0;
    bool spontaneous = false;
};

class OpenWidget : public QWinWidget
{
public:
    using QWinWidget::nativeEvent;
    using QWinWidget::QWinWidget;
};

} // namespace

void TestQWinWidget::itBecomesAHiddenChildAndIsToldOfItsEmbedding()
{
    Container container;
    EmbeddingWatch watch;
    QWinWidget widget(container.Handle(), nullptr, Qt::FramelessWindowHint);
    QCOMPARE(int(QEvent::EmbeddingControl), 79);
    QCOMPARE(watch.count, 1);
    QVERIFY(!watch.spontaneous);
    QCOMPARE(widget.parentWindow(), container.Handle());
    QCOMPARE(widget.parentWidget(), &container);
    QVERIFY(!widget.isWindow());
    container.show();
    QVERIFY(!widget.isVisible());
    widget.show();
    QVERIFY(widget.isVisible());
}

void TestQWinWidget::withoutAWindowNothingIsEmbedded()
{
    EmbeddingWatch watch;
    QWinWidget widget(nullptr);
    QCOMPARE(watch.count, 0);
    QVERIFY(widget.isWindow());
    widget.showCentered();
    QVERIFY(widget.isVisible());
}

void TestQWinWidget::showCenteredPutsItsCornerInTheMiddleOfTheWindow()
{
    QWidget window;
    Container container(&window);
    container.setGeometry(30, 20, 301, 201);
    QWinWidget widget(container.Handle());
    window.show();
    widget.showCentered();
    QVERIFY(widget.isVisible());
    QCOMPARE(widget.geometry(), QRect(QPoint(150, 100), QPoint(149, 99)));
}

void TestQWinWidget::anObjectTakesItAlong()
{
    Container container;
    auto *object = new QObject;
    const QPointer<QWinWidget> widget = new QWinWidget(container.Handle(), object);
    delete object;
    QVERIFY(!widget);
}

void TestQWinWidget::aWidgetOfItsOwnKindTakesItAlong()
{
    Container container;
    auto *owner = new QWidget;
    const QPointer<QWinWidget> embedded = new QWinWidget(container.Handle(), owner);
    const QPointer<QWinWidget> plain = new QWinWidget(nullptr, owner);
    QCOMPARE(embedded->parentWidget(), &container);
    QCOMPARE(plain->parentWidget(), owner);
    delete owner;
    QVERIFY(!embedded);
    QVERIFY(!plain);
}

void TestQWinWidget::aNativeMessageIsNeverUsedUp()
{
    Container container;
    OpenWidget widget(container.Handle());
    long result = 7;
    QVERIFY(!widget.nativeEvent("xcb_generic_event_t", nullptr, &result));
    QCOMPARE(result, 7L);
}

VN_TEST_MAIN(TestQWinWidget)
#include "tst_qwinwidget.moc"

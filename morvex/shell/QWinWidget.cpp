#include "shell/QWinWidget.h"

#include <QApplication>
#include <QChildEvent>
#include <QFocusEvent>
#include <QWindow>

using nativeWindow::Onward;

namespace {

/// A widget of the panel that the Tab key can reach; a hidden one, on a page in the back say, is
/// passed over.
bool TakesTabFocus(const QWidget *widget, const QWidget *panel)
{
    return (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled()
        && (widget == panel || widget->isVisibleTo(panel));
}

/// The panel's own chain of widgets ends at the panel. Where the host is made of widgets as well,
/// theirs are in the same chain, and are as good as the end.
bool IsBorder(const QWidget *widget, const QWidget *panel)
{
    return widget == panel || !panel->isAncestorOf(widget);
}

bool IsLastOfChain(QWidget *from, const QWidget *panel)
{
    QWidget *widget = from;
    do {
        widget = widget->nextInFocusChain();
        if (IsBorder(widget, panel))
            return true;
        if (TakesTabFocus(widget, panel))
            return false;
    } while (widget != from);
    return false;
}

/// The chain is walked once around, forward: what counts is whether the border is met behind all
/// others that the Tab key can reach.
bool IsFirstOfChain(QWidget *from, const QWidget *panel)
{
    if (IsBorder(from, panel))
        return true;
    bool isBorderLast = false;
    for (QWidget *widget = from->nextInFocusChain(); widget != from;
         widget = widget->nextInFocusChain()) {
        if (IsBorder(widget, panel))
            isBorderLast = true;
        else if (TakesTabFocus(widget, panel))
            isBorderLast = false;
    }
    return isBorderLast;
}

} // namespace

QWinWidget::QWinWidget(nativeWindow::Handle parent, QObject *object, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), parentWnd(parent), prevFocus(nullptr), reenableParent(false)
{
    if (auto *widget = qobject_cast<QWidget *>(object))
        setParent(widget, windowFlags());
    if (object) // only a widget can be a widget's parent; any object can take it along at its end
        connect(object, &QObject::destroyed, this, [this] { delete this; });
    init();
}

QWinWidget::~QWinWidget() = default;

void QWinWidget::init()
{
    if (!parentWnd)
        return;
    nativeWindow::Embed(this, parentWnd);
    if (QCoreApplication::instance()) {
        QEvent embedded(QEvent::EmbeddingControl);
        QCoreApplication::sendEvent(this, &embedded);
    }
}

nativeWindow::Handle QWinWidget::parentWindow() const
{
    return parentWnd;
}

void QWinWidget::show()
{
    saveFocus();
    QWidget::show();
}

void QWinWidget::showCentered()
{
    const nativeWindow::Rectangle parent = nativeWindow::WindowRectangle(parentWnd);
    setGeometry(parent.width / 2, parent.height / 2, /*w=*/0, /*h=*/0);
    show();
}

void QWinWidget::saveFocus()
{
    if (!prevFocus)
        prevFocus = nativeWindow::GetFocus();
    if (!prevFocus)
        prevFocus = parentWindow();
}

/// What was saved stays saved: the first one that had the focus gets it back each time.
void QWinWidget::resetFocus()
{
    nativeWindow::SetFocus(prevFocus ? prevFocus : parentWindow());
}

/// A dialog opened with this widget as its parent. It hides the panel, which the container's next
/// paint shows again.
bool QWinWidget::eventFilter(QObject *object, QEvent *event)
{
    auto *child = qobject_cast<QWidget *>(object);
    if (!child)
        return QObject::eventFilter(object, event);
    const bool isDeletedOnClose = child->testAttribute(Qt::WA_DeleteOnClose);
    switch (event->type()) {
    case QEvent::Show:
        if (!child->isWindow())
            break;
        saveFocus();
        hide();
        if (child->isModal() && !reenableParent) {
            nativeWindow::Enable(parentWnd, /*enabled=*/false);
            reenableParent = true;
        }
        break;
    case QEvent::Hide:
        if (reenableParent) {
            nativeWindow::Enable(parentWnd, /*enabled=*/true);
            reenableParent = false;
        }
        resetFocus();
        if (isDeletedOnClose && child->isWindow())
            deleteLater();
        break;
    case QEvent::Close:
        nativeWindow::Activate(parentWnd);
        if (isDeletedOnClose)
            deleteLater();
        break;
    case QEvent::WindowDeactivate:
        if (child->isModal())
            nativeWindow::BringToTop(parentWnd);
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

/// Any news of a child but a new one enables the host's window: a modal child that is deleted while
/// it is up never hides.
void QWinWidget::childEvent(QChildEvent *event)
{
    if (event->type() == QEvent::ChildAdded) {
        auto *child = qobject_cast<QWidget *>(event->child());
        if (child && (child->isWindow() || child->isModal()))
            child->installEventFilter(this);
        return;
    }
    if (reenableParent) {
        reenableParent = false;
        nativeWindow::Enable(parentWnd, /*enabled=*/true);
    }
}

/// The focus comes over the border. Only this widget and the next one in the chain are looked at:
/// where neither takes the Tab key, nothing gets the focus.
void QWinWidget::focusInEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason)
        return;
    QWidget *candidate = this;
    if (!TakesTabFocus(candidate, this))
        candidate = nextInFocusChain();
    if (!TakesTabFocus(candidate, this) || !(candidate == this || isAncestorOf(candidate)))
        return;
    candidate->setFocus(Qt::OtherFocusReason);
    if (reason == Qt::BacktabFocusReason)
        QWidget::focusNextPrevChild(/*next=*/false); // from the first one back: to the last
}

/// The keyboard has come to the widget's native window. How, only the Shift key tells; unless Qt has
/// fetched it for a widget that is to have it, a clicked one, say.
bool QWinWidget::nativeEvent(const QByteArray &, void *message, long *)
{
    if (!nativeWindow::IsFocusMessage(message) || !QCoreApplication::instance())
        return false;
    const QWidget *focused = QApplication::focusWidget();
    // Qt hears late of a keyboard that goes: while it takes the window for the active one, this is
    // the widget of last time.
    const bool isFetched
        = focused && focused->window() == this && QGuiApplication::focusWindow() != windowHandle();
    if (isFetched)
        return false;
    const bool isBackward = nativeWindow::IsShiftDown();
    QFocusEvent focus(QEvent::FocusIn, isBackward ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    QCoreApplication::sendEvent(this, &focus);
    if (!focusWidget()) // an active window without one gets any that Qt finds
        setFocus(Qt::OtherFocusReason);
    return false; // the native handling goes on
}

bool QWinWidget::focusNextPrevChild(bool next)
{
    if (!parentWnd)
        return QWidget::focusNextPrevChild(next);
    QWidget *from = focusWidget() ? focusWidget() : this;
    const bool isLeaving = next ? IsLastOfChain(from, this) : IsFirstOfChain(from, this);
    if (!isLeaving)
        return QWidget::focusNextPrevChild(next);
    nativeWindow::SetFocus(parentWnd, next ? Onward::Forward : Onward::Backward);
    return true;
}

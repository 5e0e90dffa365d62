#include "shell/NativeWindow.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QHash>
#include <QPointer>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace nativeWindow {
namespace {

class HostWindow;

/// The host's widgets that docking has to do with, by their handles. Never destroyed: a widget may
/// go after the library's own objects.
QHash<Handle, HostWindow *> &HostWindows()
{
    static auto *windows = new QHash<Handle, HostWindow *>;
    return *windows;
}

/// A widget of the host's that was given a window procedure, or a panel. It lives and dies with the
/// widget, and knows it by the handle that the host gave out, also when a dock that floats has made
/// the widget's native window anew.
class HostWindow : public QObject
{
public:
    HostWindow(Handle handle, QWidget *widget);
    ~HostWindow() override;

    /// @return null when there is no such widget
    static HostWindow *At(Handle handle);
    /// Whether the panel is this widget or around it.
    bool HasInPanel(const QWidget *inner) const
    {
        return panel && (inner == panel || panel->isAncestorOf(inner));
    }

    bool eventFilter(QObject *object, QEvent *event) override;
    void Hold(QWidget *child);

    const Handle handle;
    QWidget *const widget;
    Procedure procedure;
    bool isPainting = false;
    bool isPassedOn = false; // the event at hand goes to the widget as well

private:
    bool Dispatch(unsigned message);
    bool HandFocusOver(Qt::FocusReason reason);
    void LetGo();

    QPointer<QWidget> panel;
};

/// Keeps the host's chain of widgets and a panel's apart. Qt knows one chain for all widgets of a
/// window, in the order in which they were made, and so would lead the Tab key from anywhere in the
/// host into the middle of a panel. Here a panel's widgets are passed over, and its container stands
/// for them: whoever has reached that is asked in.
class FocusBorder : public QObject
{
public:
    /// Stands as long as any container does.
    static void Raise();
    static void Lower();
    /// The next widget of the host's that the Tab key reaches; the same one when there is no other.
    static QWidget *Neighbour(QWidget *from, bool forward);

    bool eventFilter(QObject *object, QEvent *event) override;

private:
    static bool IsInPanel(const QWidget *widget);
    bool TurnBack(QWidget *entered, Qt::FocusReason reason);

    QPointer<QWidget> left; // lost the focus that is on its way
    const QWidget *turnedBack = nullptr;

    static FocusBorder *instance;
};

FocusBorder *FocusBorder::instance = nullptr;

void FocusBorder::Raise()
{
    if (instance)
        return;
    instance = new FocusBorder;
    qApp->installEventFilter(instance);
}

void FocusBorder::Lower()
{
    delete std::exchange(instance, nullptr);
}

bool FocusBorder::IsInPanel(const QWidget *widget)
{
    const auto &windows = HostWindows();
    return std::any_of(windows.cbegin(), windows.cend(),
        [widget](const HostWindow *window) { return window->HasInPanel(widget); });
}

QWidget *FocusBorder::Neighbour(QWidget *from, bool forward)
{
    QWidget *widget = from;
    do {
        widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
        const bool isReached = (widget->focusPolicy() & Qt::TabFocus) && widget->isEnabled()
            && widget->isVisible() && !IsInPanel(widget);
        if (isReached)
            break;
    } while (widget != from);
    return widget;
}

/// A widget that is turned back has not noticed anything: it gets neither of the two events.
bool FocusBorder::eventFilter(QObject *object, QEvent *event)
{
    const bool isOut = event->type() == QEvent::FocusOut;
    if (!isOut && event->type() != QEvent::FocusIn)
        return false;
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget) // styles are told as well
        return false;
    if (!isOut)
        return TurnBack(widget, static_cast<QFocusEvent *>(event)->reason());
    left = widget;
    return widget == turnedBack;
}

/// @return true when a widget of a panel had got the focus from the host's chain
bool FocusBorder::TurnBack(QWidget *entered, Qt::FocusReason reason)
{
    const QPointer<QWidget> from = std::exchange(left, nullptr);
    if (reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason)
        return false;
    if (!from || IsInPanel(from) || from->window() != entered->window() || !IsInPanel(entered))
        return false;
    turnedBack = entered;
    Neighbour(from, reason == Qt::TabFocusReason)->setFocus(reason);
    turnedBack = nullptr;
    return true;
}

/// A widget's own handling of its events, as a procedure.
std::intptr_t OrdinaryProcedure(Handle window, unsigned, std::uintptr_t, std::intptr_t)
{
    if (HostWindow *host = HostWindow::At(window))
        host->isPassedOn = true;
    return 0;
}

HostWindow::HostWindow(Handle handle, QWidget *widget)
    : QObject(widget), handle(handle), widget(widget), procedure(OrdinaryProcedure)
{
    HostWindows().insert(handle, this);
    FocusBorder::Raise();
    widget->installEventFilter(this);
    connect(widget, &QObject::destroyed, this, &HostWindow::LetGo);
}

HostWindow::~HostWindow()
{
    HostWindows().remove(handle);
    if (HostWindows().isEmpty())
        FocusBorder::Lower();
}

HostWindow *HostWindow::At(Handle handle)
{
    if (HostWindow *known = HostWindows().value(handle))
        return known;
    QWidget *widget = handle ? QWidget::find(reinterpret_cast<WId>(handle)) : nullptr;
    return widget ? new HostWindow(handle, widget) : nullptr;
}

bool HostWindow::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Paint: {
        isPainting = true;
        const bool isDone = Dispatch(kMessagePaint);
        isPainting = false;
        return isDone;
    }
    case QEvent::Resize:
        return Dispatch(kMessageSizing);
    case QEvent::FocusIn:
        return HandFocusOver(static_cast<QFocusEvent *>(event)->reason());
    default:
        return QObject::eventFilter(object, event);
    }
}

/// @return true when the procedure did not want the widget to have the event
bool HostWindow::Dispatch(unsigned message)
{
    const bool outer = isPassedOn;
    isPassedOn = false;
    procedure(handle, message, /*first=*/0, /*second=*/0);
    return !std::exchange(isPassedOn, outer);
}

/// The Tab key has brought the focus to the widget: it is the panel's now, to be taken or not.
/// @return true when the panel took it
bool HostWindow::HandFocusOver(Qt::FocusReason reason)
{
    if (reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason)
        return false;
    if (!panel || !panel->isVisible() || !panel->isEnabled())
        return false;
    QFocusEvent focus(QEvent::FocusIn, reason);
    QCoreApplication::sendEvent(panel, &focus);
    return QApplication::focusWidget() != widget;
}

/// A plain child, of a kind that keeps the Tab key inside until the panel itself lets it out.
void HostWindow::Hold(QWidget *child)
{
    panel = child;
    child->setParent(widget, (child->windowFlags() & ~Qt::WindowType_Mask) | Qt::SubWindow);
    child->hide(); // or the widget would show it with itself
    child->setAutoFillBackground(true); // as a window does by itself
    if (widget->focusPolicy() == Qt::NoFocus)
        widget->setFocusPolicy(Qt::TabFocus); // any native window can have the keyboard
}

/// The host's window goes away with its children. The panel is no child of the host's making.
void HostWindow::LetGo()
{
    if (!panel || panel->parentWidget() != widget)
        return;
    panel->hide();
    panel->setParent(nullptr);
}

QWidget *Find(Handle handle)
{
    if (const HostWindow *known = HostWindows().value(handle))
        return known->widget;
    return handle ? QWidget::find(reinterpret_cast<WId>(handle)) : nullptr;
}

} // namespace

Procedure GetProcedure(Handle window)
{
    const HostWindow *host = HostWindow::At(window);
    return host ? host->procedure : nullptr;
}

void SetProcedure(Handle window, Procedure procedure)
{
    if (HostWindow *host = HostWindow::At(window))
        host->procedure = procedure;
}

std::intptr_t CallProcedure(Procedure procedure, Handle window, unsigned message,
    std::uintptr_t first, std::intptr_t second)
{
    return procedure(window, message, first, second);
}

std::intptr_t DefaultProcedure(Handle, unsigned, std::uintptr_t, std::intptr_t)
{
    return 0; // the widget does not get the event; its background is painted already
}

void SetProperty(Handle window, const char *name, void *value)
{
    if (QWidget *widget = Find(window))
        widget->setProperty(name, QVariant::fromValue(value));
}

void *GetProperty(Handle window, const char *name)
{
    const QWidget *widget = Find(window);
    return widget ? widget->property(name).value<void *>() : nullptr;
}

void Embed(QWidget *widget, Handle parent)
{
    if (HostWindow *host = HostWindow::At(parent))
        host->Hold(widget);
}

Rectangle ClientRectangle(Handle window)
{
    const QWidget *widget = Find(window);
    return widget ? Rectangle{ 0, 0, widget->width(), widget->height() } : Rectangle{};
}

Rectangle WindowRectangle(Handle window)
{
    const QWidget *widget = Find(window);
    if (!widget)
        return {};
    const QRect frame = widget->isWindow()
        ? widget->frameGeometry()
        : QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    return { frame.x(), frame.y(), frame.width(), frame.height() };
}

void Invalidate(Handle window)
{
    const HostWindow *host = HostWindow::At(window);
    if (host && !host->isPainting)
        host->widget->update();
}

/// Qt disables a widget's windows with it, and a disabled widget loses the focus. A dialog for which
/// the window is disabled keeps out of that: what counts as disabled already is passed over.
void Enable(Handle window, bool enabled)
{
    QWidget *widget = Find(window);
    if (!widget)
        return;
    QList<QWidget *> dialogs;
    if (!enabled) {
        const QList<QWidget *> children = widget->findChildren<QWidget *>();
        for (QWidget *child : children) {
            if (child->isWindow() && child->isEnabled())
                dialogs << child;
        }
    }
    for (QWidget *dialog : qAsConst(dialogs))
        dialog->setAttribute(Qt::WA_Disabled, true);
    widget->setEnabled(enabled);
    for (QWidget *dialog : qAsConst(dialogs))
        dialog->setAttribute(Qt::WA_Disabled, false);
}

/// A program that the user has left does not come to the front by itself.
void BringToTop(Handle window)
{
    QWidget *widget = Find(window);
    if (!widget)
        return;
    widget->raise();
    if (QGuiApplication::applicationState() == Qt::ApplicationActive)
        widget->window()->raise();
}

void Activate(Handle window)
{
    if (QWidget *widget = Find(window))
        widget->window()->activateWindow();
}

Handle GetFocus()
{
    const QWidget *focused = QApplication::focusWidget();
    if (!focused)
        return nullptr;
    // As the host hands it over. NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<Handle>(focused->effectiveWinId());
}

/// A window of widgets knows which of them has its focus.
void SetFocus(Handle window, Onward onward)
{
    QWidget *widget = Find(window);
    if (!widget)
        return;
    if (!widget->isActiveWindow())
        widget->window()->activateWindow();
    if (onward != Onward::Nowhere) {
        const bool forward = onward == Onward::Forward;
        FocusBorder::Neighbour(widget, forward)
            ->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return;
    }
    QWidget *within = widget->isWindow() ? widget->focusWidget() : nullptr;
    (within ? within : widget)->setFocus(Qt::OtherFocusReason);
}

bool IsShiftDown()
{
    return QGuiApplication::keyboardModifiers() & Qt::ShiftModifier;
}

/// The host's widget tells of the focus; see HandFocusOver.
bool IsFocusMessage(void *)
{
    return false;
}

} // namespace nativeWindow

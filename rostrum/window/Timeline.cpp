#include "Timeline.h"

#include "TimelinePaint.h"
#include "WindowIcons.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSlider>
#include <QSplitter>
#include <QToolButton>

#include <cmath>

namespace rostrum {
namespace {

constexpr int kWidestOutline = 600; // pixels; more room is better for the tracks
constexpr int kReadableOutline = 360;
constexpr int kLeastTracks = 160;
constexpr int kOutlineShare = 42; // percent of a wide timeline
constexpr int kZoomSteps = 100; // of the slider
constexpr int kBehindEnd = 40; // pixels that can be seen beyond the last frame

/// The slider turns the scale by ratios: each step is as much nearer as the one before.
double ScaleOfStep(int step)
{
    const double part = double(step) / kZoomSteps;
    return 0.2 * std::pow(TimeScale::kMost / 0.2, part);
}

int StepOfScale(double perFrame)
{
    const double part = std::log(perFrame / 0.2) / std::log(TimeScale::kMost / 0.2);
    return qBound(0, static_cast<int>(std::lround(part * kZoomSteps)), kZoomSteps);
}

/// The left column's head: what the columns below hold.
class OutlineHead : public QWidget
{
public:
    explicit OutlineHead(QWidget *parent) : QWidget(parent)
    {
        setFixedHeight(TimelineRuler::kHeight);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const TimelineColors colors(palette());
        painter.setPen(colors.faintText);
        const OutlineCells cells(width());
        const auto write = [&](OutlineCells::Cell cell, const QString &text) {
            QRect place = cells.Rect(cell, 0);
            place.setHeight(height());
            DrawElided(painter, place, text);
        };
        write(OutlineCells::Name, Timeline::tr("Layer"));
        write(OutlineCells::Drawing, Timeline::tr("Drawing, value"));
        write(OutlineCells::Parent, Timeline::tr("Parent"));
        painter.setPen(colors.line);
        painter.drawLine(0, height() - 1, width(), height() - 1);
        painter.drawLine(width() - 1, 0, width() - 1, height());
    }
};

/// A handle that is a quiet line: styles put their brightest colour on it.
class PlainHandle : public QSplitterHandle
{
public:
    using QSplitterHandle::QSplitterHandle;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(rect(), TimelineColors(palette()).line);
    }
};

class PlainSplitter : public QSplitter
{
public:
    using QSplitter::QSplitter;

protected:
    QSplitterHandle *createHandle() override { return new PlainHandle(orientation(), this); }
};

/// How a kind of key looks, for its button.
QIcon KeyIcon(Interpolation kind, const QPalette &palette)
{
    constexpr int side = 16; // pixels
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const TimelineColors colors(palette);
    DrawKey(painter, QPointF(side / 2.0, side / 2.0), kind, kind, colors.key, colors.line);
    return QIcon(picture);
}

} // namespace

Timeline::Timeline(Session &session, QWidget *parent)
    : QWidget(parent), session(session), board(new TimelineBoard(session, this))
{
    setObjectName(QStringLiteral("timeline"));
    splitter = new PlainSplitter(Qt::Horizontal, this);
    splitter->setObjectName(QStringLiteral("spTimeline"));
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(3);
    splitter->addWidget(NewLeft());
    splitter->addWidget(NewRight());
    splitter->widget(0)->setMaximumWidth(kWidestOutline);
    connect(splitter, &QSplitter::splitterMoved, this, [this] { isSplitByHand = true; });
    sb_Y = new QScrollBar(Qt::Vertical, this);
    sb_Y->setObjectName(QStringLiteral("sb_Y"));
    sb_Y->setSingleStep(TimelineRows::kRowHeight);
    auto *body = new QHBoxLayout;
    body->setSpacing(0);
    body->addWidget(splitter, 1);
    body->addWidget(sb_Y);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(NewBar());
    layout->addLayout(body, 1);
    setFocusProxy(tracks);

    connect(board, &TimelineBoard::SigChanged, this, &Timeline::OnChanged);
    connect(board, &TimelineBoard::SigScrolled, this, &Timeline::OnScrolled);
    connect(board, &TimelineBoard::SigPreview, this, &Timeline::SigPreview);
    connect(board, &TimelineBoard::SigPreviewEnd, this, &Timeline::SigPreviewEnd);
    connect(outline, &TimelineOutline::SigShowRow, this, &Timeline::ShowRow);
    connect(outline, &TimelineOutline::SigHint, this, &Timeline::OnHint);
    connect(tracks, &TimelineTracks::SigHint, this, &Timeline::OnHint);
    connect(tracks, &TimelineTracks::SigMenu, this, &Timeline::OnMenu);
    connect(tracks, &TimelineTracks::SigEditKey, outline,
        [this](int row) { outline->OnEditValue(row); });
    connect(sb_X, &QScrollBar::valueChanged, this, [this](int value) {
        TimeScale scale = board->Scale();
        scale.SetScroll(value);
        if (!following)
            board->SetScale(scale);
    });
    connect(sb_Y, &QScrollBar::valueChanged, board, &TimelineBoard::SetScrollY);
    connect(&session, &Session::TimeChanged, this, &Timeline::OnTimeChanged);
    connect(&session, &Session::ActiveItemChanged, this, &Timeline::OnCompositionChanged);
    tracks->installEventFilter(this);
    OnChanged();
}

QAction *Timeline::NewAction(const char *name, const QString &text, void (Timeline::*slot)())
{
    auto *action = new QAction(text, this);
    action->setObjectName(QLatin1String(name));
    connect(action, &QAction::triggered, this, slot);
    return action;
}

QWidget *Timeline::NewBar()
{
    auto *bar = new QWidget(this);
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(8, 2, 8, 2);
    layout->setSpacing(2);
    lbName = new QLabel(bar);
    lbName->setObjectName(QStringLiteral("lbName"));
    lbName->setTextFormat(Qt::PlainText);
    lbName->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layout->addWidget(lbName, 1);
    keyActions = { NewAction("acHold", tr("Hold up to the next key"), &Timeline::OnHold),
        NewAction("acLinear", tr("Go to the next key in a line"), &Timeline::OnLinear),
        NewAction("acBezier", tr("Go to the next key in a curve"), &Timeline::OnBezier) };
    acDelete = NewAction("acDelete", tr("Delete"), &Timeline::OnDelete);
    acDelete->setShortcut(Qt::Key_Delete);
    acDelete->setShortcutContext(Qt::WidgetShortcut);
    AddKeys({ acDelete });
    for (QAction *action : qAsConst(keyActions)) {
        auto *button = new QToolButton(bar);
        button->setObjectName(QStringLiteral("pb") + action->objectName().mid(2));
        button->setDefaultAction(action);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        layout->addWidget(button);
    }
    layout->addSpacing(16);
    auto *fit = new QToolButton(bar);
    fit->setObjectName(QStringLiteral("pbFit"));
    fit->setToolTip(tr("All frames"));
    fit->setIcon(NewIcon(IconShape::Fit, palette()));
    fit->setAutoRaise(true);
    fit->setFocusPolicy(Qt::NoFocus);
    connect(fit, &QToolButton::clicked, this, &Timeline::OnFit);
    layout->addWidget(fit);
    slZoom = new QSlider(Qt::Horizontal, bar);
    slZoom->setObjectName(QStringLiteral("slZoom"));
    slZoom->setToolTip(tr("Zoom; the wheel over the ruler zooms at the cursor"));
    slZoom->setRange(0, kZoomSteps);
    slZoom->setFixedWidth(130);
    slZoom->setFocusPolicy(Qt::NoFocus);
    connect(slZoom, &QSlider::valueChanged, this, &Timeline::OnZoomSlider);
    layout->addWidget(slZoom);
    return bar;
}

QWidget *Timeline::NewLeft()
{
    auto *left = new QWidget(this);
    auto *layout = new QVBoxLayout(left);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    outline = new TimelineOutline(*board, left);
    lbHint = new QLabel(left);
    lbHint->setObjectName(QStringLiteral("lbHint"));
    lbHint->setTextFormat(Qt::PlainText);
    lbHint->setContentsMargins(8, 0, 8, 0);
    lbHint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    layout->addWidget(new OutlineHead(left));
    layout->addWidget(outline, 1);
    layout->addWidget(lbHint);
    return left;
}

QWidget *Timeline::NewRight()
{
    auto *right = new QWidget(this);
    auto *layout = new QVBoxLayout(right);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    ruler = new TimelineRuler(*board, right);
    tracks = new TimelineTracks(*board, right);
    sb_X = new QScrollBar(Qt::Horizontal, right);
    sb_X->setObjectName(QStringLiteral("sb_X"));
    lbHint->setFixedHeight(sb_X->sizeHint().height());
    layout->addWidget(ruler);
    layout->addWidget(tracks, 1);
    layout->addWidget(sb_X);
    return right;
}

void Timeline::AddKeys(const QList<QAction *> &actions)
{
    outline->addActions(actions);
    tracks->addActions(actions);
}

void Timeline::OnDelete()
{
    const ItemId composition = board->Comp();
    const KeyIds keys = board->Keys();
    const QVector<LayerId> layers = session.SelectedLayers();
    if (!keys.empty())
        board->Do("Delete Keys", [&](Project &project) { RemoveKeys(project, composition, keys); });
    else if (!layers.isEmpty())
        board->Do("Delete Layers", [&](Project &project) {
            for (const LayerId layer : layers)
                project.RemoveLayer(composition, layer);
        });
}

void Timeline::SetKeys(Interpolation interpolation)
{
    const KeyIds keys = board->Keys();
    if (keys.empty())
        return;
    board->Do("Key Interpolation",
        [&](Project &project) { SetInterpolation(project, board->Comp(), keys, interpolation); });
}

void Timeline::OnMenu(const QPoint &globalPlace)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnKeys"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(keyActions);
    menu->addSeparator();
    menu->addAction(acDelete);
    menu->popup(globalPlace);
}

void Timeline::OnHint(const QString &hint)
{
    if (lbHint->text() != hint)
        lbHint->setText(hint);
}

void Timeline::OnFit()
{
    TimeScale scale = board->Scale();
    scale.Fit(session.FrameCount(), tracks->width() - kBehindEnd);
    board->SetScale(scale);
    fittedScale = board->Scale().PixelsPerFrame();
}

void Timeline::OnZoomSlider(int value)
{
    if (following)
        return;
    TimeScale scale = board->Scale();
    const double now = scale.MiddleOf(session.CurrentFrame());
    const bool isSeen = now >= 0 && now <= tracks->width();
    scale.ZoomAt(isSeen ? now : tracks->width() / 2.0, ScaleOfStep(value) / scale.PixelsPerFrame());
    board->SetScale(scale);
}

void Timeline::OnChanged()
{
    const Item *item = session.GetProject().Find(board->Comp());
    const QString name = item ? QString::fromUtf8(item->name) : tr("No composition");
    if (lbName->text() != name)
        lbName->setText(name);
    for (QAction *action : qAsConst(keyActions))
        action->setEnabled(!board->Keys().empty());
    OnScrolled();
}

int Timeline::WidestScroll() const
{
    const double wide = session.FrameCount() * board->Scale().PixelsPerFrame() + kBehindEnd;
    return static_cast<int>(qBound(0.0, wide - tracks->width(), 2.0e9));
}

/// Holds what is shown within what there is, and the scroll bars to it.
void Timeline::OnScrolled()
{
    if (following)
        return;
    following = true;
    TimeScale scale = board->Scale();
    scale.SetScroll(qBound(0.0, std::round(scale.Scroll()), double(WidestScroll())));
    if (scale.Scroll() != board->Scale().Scroll())
        board->SetScale(scale);
    const int highest = qMax(0, board->Rows().Height() - tracks->height());
    board->SetScrollY(qBound(0, board->ScrollY(), highest));
    sb_X->setRange(0, WidestScroll());
    sb_X->setPageStep(qMax(1, tracks->width()));
    sb_X->setSingleStep(qMax(1, qRound(scale.PixelsPerFrame())));
    sb_X->setValue(static_cast<int>(scale.Scroll()));
    sb_Y->setRange(0, highest);
    sb_Y->setPageStep(qMax(1, tracks->height()));
    sb_Y->setValue(board->ScrollY());
    slZoom->setValue(StepOfScale(scale.PixelsPerFrame()));
    following = false;
}

/// The current time stays in sight, a page at a time, so that playing does not move the rows at
/// every frame.
void Timeline::OnTimeChanged()
{
    TimeScale scale = board->Scale();
    const double x = scale.MiddleOf(session.CurrentFrame());
    if (x >= 0 && x <= tracks->width())
        return;
    scale.SetScroll(scale.Scroll() + x - tracks->width() * 0.1);
    board->SetScale(scale);
}

void Timeline::OnCompositionChanged()
{
    if (fitted != board->Comp() && tracks->width() > kBehindEnd && isVisible()) {
        fitted = board->Comp();
        board->SetScrollY(0);
        OnFit();
    }
}

void Timeline::ShowRow(int row)
{
    if (row < 0)
        return;
    const int top = TimelineRows::TopOf(row);
    const int bottom = top + TimelineRows::kRowHeight;
    if (top < board->ScrollY())
        board->SetScrollY(top);
    else if (bottom > board->ScrollY() + tracks->height())
        board->SetScrollY(bottom - tracks->height());
}

/// The outline is as wide as it takes to read the files' names, until the user decides.
void Timeline::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const int readable = qMin(kReadableOutline, width() - kLeastTracks);
    const int outlineWidth = qMin(qMax(width() * kOutlineShare / 100, readable), kWidestOutline);
    if (!isSplitByHand)
        splitter->setSizes({ outlineWidth, width() - outlineWidth });
}

/// What fits is known when the tracks have their size: the splitter, too, gives them another. What
/// was fitted stays so until the user zooms.
bool Timeline::eventFilter(QObject *object, QEvent *event)
{
    if (object == tracks && event->type() == QEvent::Resize) {
        const bool wasFitted = board->Scale().PixelsPerFrame() == fittedScale;
        OnScrolled();
        OnCompositionChanged();
        if (wasFitted && tracks->width() > kBehindEnd)
            OnFit();
    }
    return QWidget::eventFilter(object, event);
}

void Timeline::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    for (int i = 0; i < keyActions.size(); ++i) {
        constexpr Interpolation kinds[]
            = { Interpolation::Hold, Interpolation::Linear, Interpolation::Bezier };
        keyActions[i]->setIcon(KeyIcon(kinds[i], palette()));
    }
    OnCompositionChanged();
}

} // namespace rostrum

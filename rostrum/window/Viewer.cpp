#include "Viewer.h"

#include "WindowIcons.h"

#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QToolButton>

namespace rostrum {
namespace {

constexpr int kZooms = 7; // entries of the zoom list: fit, and six in percent

} // namespace

Viewer::Viewer(Session &session, QWidget *parent, qint64 cacheLimit)
    : QWidget(parent)
    , session(session)
    , frames(session.Drawings(), cacheLimit)
    , previewFrames(session.Drawings(), 0)
{
    setObjectName(QStringLiteral("viewer"));
    view = new FrameView(this);
    setFocusProxy(view);
    lbMessages = new QLabel(view);
    lbMessages->setObjectName(QStringLiteral("lbMessages"));
    lbMessages->setForegroundRole(QPalette::BrightText);
    lbMessages->setTextFormat(Qt::PlainText);
    lbMessages->setWordWrap(true);
    lbMessages->setAutoFillBackground(true);
    lbMessages->setContentsMargins(6, 2, 6, 2);
    auto *over = new QVBoxLayout(view); // over the frame: the view keeps its size while it plays
    over->setContentsMargins(0, 0, 0, 0);
    over->addStretch(1);
    over->addWidget(lbMessages);
    transport = new Transport(session, this);
    view->addActions(transport->Actions());

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(view, 1);
    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(6, 3, 6, 3);
    bar->setSpacing(2);
    AddZoom(bar);
    ckChecker = AddSwitch(bar, "ckChecker", tr("Show transparency as a checkerboard"));
    ckSafeFrames = AddSwitch(bar, "ckSafeFrames", tr("Safe frames: action 90 %, title 80 %"));
    bar->addStretch(1);
    bar->addWidget(transport);
    layout->addLayout(bar);
    MakeIcons();

    connect(ckChecker, &QToolButton::toggled, view, &FrameView::OnChecker);
    connect(ckChecker, &QToolButton::toggled, this, &Viewer::ShowFrame);
    connect(ckSafeFrames, &QToolButton::toggled, view, &FrameView::OnSafeFrames);
    connect(view, &FrameView::SigZoomed, this, &Viewer::ShowZoom);
    connect(view, &FrameView::SigTouched, this, [&session] { session.ActivateComposition(); });
    connect(transport, &Transport::SigPlaying, this, &Viewer::OnPlaying);
    connect(&session, &Session::ProjectChanged, this, &Viewer::ShowFrame);
    connect(&session, &Session::ActiveItemChanged, this, &Viewer::ShowFrame);
    connect(&session, &Session::TimeChanged, this, &Viewer::ShowFrame);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
        [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                OnReload();
        });
    ShowFrame();
    ShowZoom();
}

void Viewer::AddZoom(QHBoxLayout *layout)
{
    cbZoom = new QComboBox(this);
    cbZoom->setObjectName(QStringLiteral("cbZoom"));
    cbZoom->setToolTip(tr("Zoom; the wheel zooms at the cursor, a double click fits"));
    cbZoom->setFocusPolicy(Qt::NoFocus); // the keys stay with the view
    cbZoom->addItem(tr("Fit"), 0);
    for (const int percent : { 25, 50, 100, 200, 400, 800 })
        cbZoom->addItem(QStringLiteral("%1 %").arg(percent), percent);
    cbZoom->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbZoom->setMinimumContentsLength(9);
    connect(cbZoom, QOverload<int>::of(&QComboBox::activated), this, &Viewer::OnZoomPicked);
    layout->addWidget(cbZoom);
}

QToolButton *Viewer::AddSwitch(QHBoxLayout *layout, const char *name, const QString &hint)
{
    auto *button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(hint);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    layout->addWidget(button);
    return button;
}

void Viewer::MakeIcons()
{
    ckChecker->setIcon(NewIcon(IconShape::Checker, palette()));
    ckSafeFrames->setIcon(NewIcon(IconShape::SafeFrames, palette()));
}

void Viewer::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        MakeIcons();
    QWidget::changeEvent(event);
}

void Viewer::OnPreview(const Project &project)
{
    preview = project;
    ShowFrame();
}

void Viewer::OnPreviewEnd()
{
    preview.reset();
    ShowFrame();
}

void Viewer::OnReload()
{
    frames.Clear();
    ShowFrame();
}

void Viewer::ShowFrame()
{
    const Project &project = preview ? *preview : session.GetProject();
    const ItemId composition = session.ActiveCompositionId();
    if (!project.FindComposition(composition)) {
        view->SetFrame(QImage(),
            tr("No composition.\nMake one, or pick one in the project list, to see it here."));
        ShowMessages({});
        return;
    }
    view->LetGo(); // what is not kept is drawn into the memory of the last
    const FrameCache::Frame &frame = (preview ? previewFrames : frames)
                                         .Get(project, composition, session.CurrentFrame(),
                                             /*background=*/!ckChecker->isChecked());
    view->SetFrame(frame.image, frame.messages.join(QLatin1Char('\n')));
    ShowMessages(frame.image.isNull() ? QStringList() : frame.messages);
}

void Viewer::ShowMessages(const QStringList &messages)
{
    QString line = messages.value(0);
    if (messages.size() > 1)
        line += tr("  (and %1 more)").arg(messages.size() - 1);
    if (lbMessages->text() != line)
        lbMessages->setText(line);
    const QString all = messages.join(QLatin1Char('\n'));
    if (lbMessages->toolTip() != all)
        lbMessages->setToolTip(all);
    lbMessages->setVisible(!messages.isEmpty());
}

/// A zoom that is none of the list's gets an entry of its own, the last.
void Viewer::ShowZoom()
{
    const QSignalBlocker quiet(cbZoom);
    const int percent = qRound(view->Zoom() * 100);
    const QString text = QStringLiteral("%1 %").arg(percent);
    cbZoom->setItemText(0, view->IsFitted() ? tr("Fit (%1)").arg(text) : tr("Fit"));
    if (cbZoom->count() > kZooms)
        cbZoom->removeItem(kZooms);
    int entry = view->IsFitted() ? 0 : cbZoom->findData(percent);
    if (entry < 0) {
        entry = kZooms;
        cbZoom->addItem(text, percent);
    }
    cbZoom->setCurrentIndex(entry);
}

void Viewer::OnZoomPicked()
{
    const int percent = cbZoom->currentData().toInt();
    if (percent == 0)
        view->OnFit();
    else
        view->OnZoom(percent / 100.0);
}

void Viewer::OnPlaying(bool on)
{
    view->SetQuick(on);
}

} // namespace rostrum

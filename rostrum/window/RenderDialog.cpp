#include "RenderDialog.h"

#include "window/OneLine.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>

namespace rostrum {
namespace {

constexpr int kMessagesTold = 8;
constexpr int kFieldWidth = 380; // pixels
constexpr char kMovieSuffix[] = ".mp4";
constexpr int kFirstNumber = 1; // what a person calls the first frame

/// @param count of the composition's frames @param frame counted from 0
QSpinBox *FrameBox(const char *name, int count, int frame)
{
    auto *box = new QSpinBox;
    box->setObjectName(QLatin1String(name));
    box->setRange(kFirstNumber, qMax(count - 1, 0) + kFirstNumber);
    box->setValue(frame + kFirstNumber);
    return box;
}

int FrameOf(const QSpinBox *box)
{
    return box->value() - kFirstNumber;
}

} // namespace

RenderDialog::RenderDialog(Session &session, RenderTarget target, QWidget *parent)
    : QDialog(parent)
    , session(session)
    , target(target)
    , composition(session.ActiveCompositionId())
    , place(new QLineEdit)
    , first(FrameBox("first", session.FrameCount(), 0))
    , last(FrameBox("last", session.FrameCount(), session.FrameCount() - 1))
    , background(new QCheckBox(tr("With the composition's background")))
    , count(new QLabel)
    , files(target == RenderTarget::Frames ? new OneLine : nullptr)
    , state(new QLabel)
    , bar(new QProgressBar)
{
    const QString name = QString::fromUtf8(session.GetProject().Find(composition)->name);
    setWindowTitle(
        (target == RenderTarget::Frames ? tr("Render Frames of %1") : tr("Render Movie of %1"))
            .arg(name));
    place->setObjectName(QStringLiteral("place"));
    place->setText(ProposedPath());
    place->setMinimumWidth(kFieldWidth);
    background->setObjectName(QStringLiteral("background"));
    background->setChecked(true);
    background->setVisible(target == RenderTarget::Frames); // a movie has no transparency
    state->setObjectName(QStringLiteral("state"));
    state->setWordWrap(true);
    state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    bar->setVisible(false);
    MakeFields();
    for (QSpinBox *box : { first, last }) {
        box->setToolTip(tr("Frames count from 1 here, as in viewer, timeline and sheet."));
        connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, &RenderDialog::OnRange);
    }
    connect(this, &RenderDialog::Progressed, this, &RenderDialog::OnProgressed);
    connect(this, &RenderDialog::Finished, this, &RenderDialog::OnFinished, Qt::QueuedConnection);
    OnRange();
}

RenderDialog::~RenderDialog()
{
    stopWanted = true;
    if (worker.joinable())
        worker.join();
}

void RenderDialog::MakeFields()
{
    auto *browse = new QPushButton(tr("Browse..."));
    browse->setObjectName(QStringLiteral("browse"));
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, &RenderDialog::OnBrowse);
    auto *where = new QHBoxLayout;
    where->addWidget(place, 1);
    where->addWidget(browse);
    auto *range = new QHBoxLayout;
    range->addWidget(first);
    range->addWidget(new QLabel(tr("to")));
    range->addWidget(last);
    range->addWidget(count, 1);

    fields = new QWidget;
    auto *form = new QFormLayout(fields);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(target == RenderTarget::Frames ? tr("Folder") : tr("Movie"), where);
    form->addRow(tr("Frames"), range);
    if (files) {
        files->setObjectName(QStringLiteral("files"));
        files->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // names may be long
        auto *line = new QHBoxLayout;
        line->addWidget(files, 1); // which a form would leave without any width
        form->addRow(tr("Files"), line);
    }
    form->addRow(QString(), background);

    render = new QPushButton(tr("Render"));
    render->setObjectName(QStringLiteral("render"));
    render->setDefault(true);
    close = new QPushButton(tr("Close"));
    close->setObjectName(QStringLiteral("close"));
    close->setAutoDefault(false);
    connect(render, &QPushButton::clicked, this, &RenderDialog::OnRender);
    connect(close, &QPushButton::clicked, this, &RenderDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(render);
    buttons->addWidget(close);

    auto *column = new QVBoxLayout(this);
    column->addWidget(fields);
    column->addWidget(bar);
    column->addWidget(state);
    column->addLayout(buttons);
}

/// Beside the project, or in the user's folder.
QString RenderDialog::ProposedPath() const
{
    const QString &project = session.GetDocument().path;
    const QDir folder = project.isEmpty() ? QDir::home() : QFileInfo(project).absoluteDir();
    const QString base
        = project.isEmpty() ? QStringLiteral("rostrum") : QFileInfo(project).completeBaseName();
    return folder.filePath(
        base + QLatin1String(target == RenderTarget::Frames ? "_frames" : kMovieSuffix));
}

void RenderDialog::OnBrowse()
{
    const QString chosen = target == RenderTarget::Frames
        ? QFileDialog::getExistingDirectory(this, tr("Render Frames Into"), place->text())
        : QFileDialog::getSaveFileName(this, tr("Render Movie As"), place->text(),
            tr("Movies (*.mp4 *.mov *.mkv *.webm);;All files (*)"), nullptr,
            QFileDialog::DontConfirmOverwrite); // asked for when it is rendered
    if (!chosen.isEmpty())
        place->setText(chosen);
}

void RenderDialog::OnRange()
{
    const int frames = last->value() - first->value() + 1;
    count->setText(frames > 0 ? tr("= %1 frames").arg(frames) : tr("the last is before the first"));
    render->setEnabled(frames > 0);
    if (!files)
        return;
    const QString names = FilesText();
    files->setText(names);
    files->setToolTip(names.isEmpty()
            ? QString()
            : tr("%1\nFiles count from 0, as the command line does: frame 1 is file 0.")
                  .arg(names));
}

/// What the files will be called, empty where there will be none.
QString RenderDialog::FilesText() const
{
    if (FrameOf(last) < FrameOf(first))
        return {};
    RenderJob job(session.GetProject(), composition);
    job.SetRange(FrameOf(first), FrameOf(last));
    const QString name = job.FileName(FrameOf(first));
    return first->value() == last->value() ? name
                                           : tr("%1 to %2").arg(name, job.FileName(FrameOf(last)));
}

bool RenderDialog::MayOverwrite(const QString &path)
{
    if (target != RenderTarget::Movie || !QFileInfo::exists(path))
        return true;
    return QMessageBox::question(this, windowTitle(), tr("Replace \"%1\"?").arg(path))
        == QMessageBox::Yes;
}

RenderResult RenderDialog::Run(const Project &project, const QString &path)
{
    const auto progress = [this](const RenderProgress &now) {
        emit Progressed(now.done, now.total, now.secondsLeft);
        return !stopWanted;
    };
    if (target == RenderTarget::Movie) {
        MovieJob job(project, composition, FindEncoder(), path);
        job.SetRange(firstFrame, lastFrame);
        job.SetFirstNumber(kFirstNumber);
        return job.Run(progress);
    }
    RenderJob job(project, composition);
    job.SetRange(firstFrame, lastFrame);
    job.SetFirstNumber(kFirstNumber);
    job.SetFolder(path);
    job.SetBackground(withBackground);
    return job.Run(progress);
}

void RenderDialog::OnRender()
{
    QString path = place->text().trimmed();
    if (path.isEmpty()) {
        Say(tr("Say where to put it."));
        return;
    }
    if (target == RenderTarget::Movie && QFileInfo(path).suffix().isEmpty()) {
        path += QLatin1String(kMovieSuffix);
        place->setText(path);
    }
    if (!MayOverwrite(path))
        return;
    firstFrame = FrameOf(first);
    lastFrame = FrameOf(last);
    withBackground = background->isChecked();
    fields->setEnabled(false);
    render->setEnabled(false);
    close->setText(tr("Stop"));
    bar->setVisible(true);
    bar->setValue(0);
    state->clear();
    stopWanted = false;
    running = true;
    const Project project = session.GetProject();
    worker = std::thread([this, project, path] {
        result = Run(project, path);
        emit Finished();
    });
}

void RenderDialog::OnProgressed(int done, int total, double secondsLeft)
{
    if (!running)
        return;
    bar->setMaximum(total);
    bar->setValue(done);
    if (stopWanted)
        return; // what is said of that stays
    if (target == RenderTarget::Movie)
        state->setText(2 * done < total ? tr("Drawing the frames...") : tr("Making the movie..."));
    else if (secondsLeft >= 0)
        state->setText(
            tr("%1 of %2, about %3 s left").arg(done).arg(total).arg(secondsLeft, 0, 'f', 0));
}

/// A long text makes the dialog higher, which Qt does not see to.
void RenderDialog::Say(const QString &text)
{
    state->setText(text);
    state->setMinimumHeight(state->heightForWidth(state->width()));
}

void RenderDialog::OnFinished()
{
    worker.join();
    running = false;
    fields->setEnabled(true);
    render->setEnabled(true);
    close->setText(tr("Close"));
    close->setEnabled(true);
    QStringList told;
    if (!result.error.isEmpty())
        told << result.error;
    else if (result.isCancelled)
        told << (target == RenderTarget::Movie
                ? tr("Stopped; no movie was made.")
                : tr("Stopped after %1 frames.").arg(result.written));
    else
        told << tr("%1 frames are in %2")
                    .arg(result.written)
                    .arg(QDir::toNativeSeparators(place->text().trimmed()));
    const QStringList messages = result.messages;
    told << messages.mid(0, kMessagesTold);
    if (messages.size() > kMessagesTold)
        told << tr("... and %1 more").arg(messages.size() - kMessagesTold);
    bar->setVisible(result.Ok());
    Say(told.join(QLatin1Char('\n')));
    session.Tell(told.first());
}

void RenderDialog::reject()
{
    if (!running) {
        QDialog::reject();
        return;
    }
    stopWanted = true;
    close->setEnabled(false);
    Say(tr("Stopping after this frame..."));
}

} // namespace rostrum

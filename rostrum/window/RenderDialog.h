// Asks where and which frames of the active composition are to be rendered, and renders them: as
// numbered files, or as a movie. The way is shown and can be stopped; the window stays alive, since
// another thread draws, from a copy of the project.
//
// Fields and messages count the frames from 1, as viewer, timeline and sheet do; the files that are
// written count from 0, as the command line does, and the dialog shows their names.
#pragma once

#include "window/MovieJob.h"
#include "window/Session.h"

#include <QDialog>

#include <atomic>
#include <thread>

QT_FORWARD_DECLARE_CLASS(QCheckBox)
QT_FORWARD_DECLARE_CLASS(QLabel)
QT_FORWARD_DECLARE_CLASS(QLineEdit)
QT_FORWARD_DECLARE_CLASS(QProgressBar)
QT_FORWARD_DECLARE_CLASS(QPushButton)
QT_FORWARD_DECLARE_CLASS(QSpinBox)

namespace rostrum {

enum class RenderTarget { Frames, Movie };

class RenderDialog : public QDialog
{
    Q_OBJECT

public:
    /// There is an active composition.
    RenderDialog(Session &session, RenderTarget target, QWidget *parent = nullptr);
    ~RenderDialog() override;

    /// Stops a run that is under way, then closes.
    void reject() override;

signals:
    void Progressed(int done, int total, double secondsLeft);
    void Finished();

private:
    void MakeFields();
    void OnBrowse();
    void OnRender();
    void OnProgressed(int done, int total, double secondsLeft);
    void OnFinished();
    void OnRange();
    QString FilesText() const;
    void Say(const QString &text);
    RenderResult Run(const Project &project, const QString &path);
    QString ProposedPath() const;
    bool MayOverwrite(const QString &path);

    Session &session;
    const RenderTarget target;
    const ItemId composition;
    QLineEdit *place;
    QSpinBox *first;
    QSpinBox *last;
    QCheckBox *background;
    QLabel *count;
    QLabel *files; // null for a movie
    QLabel *state;
    QProgressBar *bar;
    QPushButton *render = nullptr;
    QPushButton *close = nullptr;
    QWidget *fields = nullptr;
    std::thread worker;
    std::atomic<bool> stopWanted{ false };
    RenderResult result; // the worker's, until it has finished
    qint32 firstFrame = 0; // of the run, for the worker
    qint32 lastFrame = 0;
    bool withBackground = true;
    bool running = false;
};

} // namespace rostrum

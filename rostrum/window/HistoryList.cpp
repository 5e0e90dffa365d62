#include "HistoryList.h"

#include <algorithm>

namespace rostrum {

HistoryList::HistoryList(Session &session, QWidget *parent) : QListWidget(parent), session(session)
{
    setObjectName(QStringLiteral("history"));
    setUniformItemSizes(true);
    connect(&session, &Session::HistoryChanged, this, &HistoryList::Fill);
    connect(this, &QListWidget::itemClicked, this, &HistoryList::OnClicked);
    connect(this, &QListWidget::itemActivated, this, &HistoryList::OnClicked);
    Fill();
}

void HistoryList::Fill()
{
    clear();
    addItem(tr("(as opened)"));
    const QVector<QByteArray> done = session.GetDocument().UndoNames();
    for (const QByteArray &name : done)
        addItem(QString::fromUtf8(name));
    setCurrentRow(done.size());
    const QVector<QByteArray> undone = session.GetDocument().RedoNames();
    for (auto name = undone.crbegin(); name != undone.crend(); ++name) {
        addItem(QString::fromUtf8(*name));
        item(count() - 1)->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
    }
    scrollToItem(currentItem());
}

void HistoryList::OnClicked(QListWidgetItem *clicked)
{
    const int wanted = row(clicked);
    int now = session.GetDocument().UndoNames().size();
    for (; now > wanted; --now)
        session.RunCommand(kHostCommandUndo); // unchecked: a plug-in may have handled it
    for (; now < wanted; ++now)
        session.RunCommand(kHostCommandRedo); // unchecked: as above
}

} // namespace rostrum

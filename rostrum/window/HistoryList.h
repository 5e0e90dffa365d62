// The history as a list, the oldest entry first; what was undone is grey. A click goes to the state
// behind an entry.
#pragma once

#include "window/Session.h"

#include <QListWidget>

namespace rostrum {

class HistoryList : public QListWidget
{
    Q_OBJECT

public:
    explicit HistoryList(Session &session, QWidget *parent = nullptr);

private:
    void Fill();
    void OnClicked(QListWidgetItem *item);

    Session &session;
};

} // namespace rostrum

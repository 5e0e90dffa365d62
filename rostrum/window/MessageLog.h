// What was told to the user, the latest at the end, with its time of day.
#pragma once

#include <QPlainTextEdit>

namespace rostrum {

class MessageLog : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit MessageLog(QWidget *parent = nullptr);

    void Add(const QString &message);
};

} // namespace rostrum

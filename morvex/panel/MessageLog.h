// The way of Qt's messages to the log page: everything that is written by qWarning() or qDebug(), and
// all of Qt's own complaints, becomes a line of the page's text widget.
//
// The handler is the process's. The type of a message is not looked at. What comes before there is a
// page, or after the page has gone, is lost.
//
// Threads   A message of another thread is queued and appended by the thread that installed the
//           handler. What is written while a line is being appended is dropped, or a widget that
//           complains about the appending would never come to an end.
#pragma once

class QTextEdit;

namespace MessageLog {

/// Takes over the messages of the process. To be called by the thread of the widgets, as often as
/// one likes; the page stays.
void Install();
/// Makes a widget the page; it may be deleted at any time. Null for none.
void SetPage(QTextEdit *page);
/// Writes no more to a page that is about to go, if it is the one: a widget may complain while it is
/// being deleted.
void DropPage(const QTextEdit *page);

} // namespace MessageLog

// The title bar of a dock: its name, and buttons to float and to close it, drawn in the colours of
// the palette. The style's own are black, which nobody sees in a dark window.
#pragma once

#include <QDockWidget>

class QToolButton;

namespace rostrum {

class DockTitle : public QWidget
{
    Q_OBJECT

public:
    explicit DockTitle(QDockWidget *dock);

    /// A button before the others. @param name of the object
    QToolButton *AddButton(const char *name, const QIcon &icon, const QString &hint);
    /// Three lines, as on a button that opens a menu.
    QIcon MenuIcon() const;

private:
    QIcon Icon(const QVector<QLineF> &lines) const;
};

} // namespace rostrum

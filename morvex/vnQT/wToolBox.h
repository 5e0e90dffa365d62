// WToolBox: sections stacked from top to bottom, each with a title row. A press on the row opens or
// closes its section; any number of them may be open at once, and nothing remembers which.
//
//     > Log                     TitleItem, closed
//     v Settings                TitleItem, open
//     +----------------------+
//     | content              |  the QFrame of the ToolItem
//     +----------------------+
//     (stretch)                 keeps the sections at the top
#pragma once

#include <QWidget>

class QAbstractButton;
class QFrame;
class QLabel;
class QVBoxLayout;

/// The title row of a section: an arrow, a button if there is one, and the title.
class TitleItem : public QWidget
{
    Q_OBJECT

public:
    /// @param frame what the row opens and closes; not owned
    /// @param check may be null; a section whose button is not checked cannot be opened
    TitleItem(QFrame *frame, const QString &title, QAbstractButton *check);

    /// Shows or hides the frame, and the arrow that tells so. Without its check there is no arrow.
    void SetOpen(bool open);

public slots:
    /// Closes an open section, opens a closed one if its check allows it.
    void OnOpenClose();

private:
    bool IsEnabled() const;

    QLabel *arrowRight = nullptr;
    QLabel *arrowDown = nullptr;
    QAbstractButton *check = nullptr;
    QFrame *frame = nullptr;
};

/// A section: the title row and, in a frame, the content. It starts closed.
class ToolItem : public QWidget
{
public:
    /// @param content shown in the frame, which takes it over
    /// @param check   may be null, see TitleItem
    ToolItem(const QString &title, QWidget *content, QAbstractButton *check);

protected:
    /// A press that nothing inside wants, on the row or on a bare spot of the content.
    void mousePressEvent(QMouseEvent *event) override;

private:
    QWidget *content = nullptr;
    QFrame *frame = nullptr;
    TitleItem *title = nullptr;
};

class WToolBox : public QWidget
{
public:
    WToolBox();

    /// Puts a section below the others and takes it over.
    void AddItem(ToolItem *item);

private:
    QVBoxLayout *layout = nullptr;
};

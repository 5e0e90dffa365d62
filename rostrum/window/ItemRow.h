// A row of the project list: the picture, the name, and below it in small what the item is. The
// label's colour is a stripe before them.
//
// In columns of their own, kind, size and length leave a name no room in a narrow dock.
#pragma once

#include <QStyledItemDelegate>

namespace rostrum {

enum ItemRole {
    kItemIdRole = Qt::UserRole,
    kItemFactsRole, // the small line
    kItemLabelRole // 0 to 16
};

class ItemRow : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
        const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
        const QModelIndex &index) const override;
};

} // namespace rostrum

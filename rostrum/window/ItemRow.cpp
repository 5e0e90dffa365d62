#include "ItemRow.h"

#include "window/Labels.h"

#include <QApplication>
#include <QPainter>

namespace rostrum {
namespace {

constexpr int kStripeWidth = 5; // pixels
constexpr int kGap = 6;
constexpr double kSmall = 0.88; // of the name's size

QFont SmallFont(const QFont &font)
{
    QFont small = font;
    small.setPointSizeF(font.pointSizeF() * kSmall);
    return small;
}

/// Right of the picture.
QRect TextRect(const QStyleOptionViewItem &option)
{
    return option.rect.adjusted(kStripeWidth + 2 * kGap + option.decorationSize.width(), 1, -3, -1);
}

QColor TextColor(const QStyleOptionViewItem &option)
{
    const bool isSelected = option.state & QStyle::State_Selected;
    return option.palette.color(
        QPalette::Normal, isSelected ? QPalette::HighlightedText : QPalette::Text);
}

void DrawLine(QPainter *painter, const QRect &rect, Qt::Alignment alignment, const QString &text)
{
    const QFontMetrics metrics(painter->font());
    painter->drawText(
        rect, static_cast<int>(alignment), metrics.elidedText(text, Qt::ElideRight, rect.width()));
}

} // namespace

void ItemRow::paint(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem whole = option;
    initStyleOption(&whole, index);
    QStyleOptionViewItem ground = whole;
    ground.text.clear();
    ground.icon = QIcon();
    QApplication::style()->drawControl(
        QStyle::CE_ItemViewItem, &ground, painter, whole.widget); // selection and focus
    painter->save();
    painter->setClipRect(whole.rect);
    QRect picture(QPoint(), whole.decorationSize);
    picture.moveCenter(whole.rect.center());
    picture.moveLeft(whole.rect.left() + kStripeWidth + kGap);
    if (const int label = index.data(kItemLabelRole).toInt())
        painter->fillRect(
            QRect(whole.rect.left() + 1, picture.top(), kStripeWidth, picture.height()),
            LabelColor(label));
    whole.icon.paint(painter, picture);
    const QRect text = TextRect(whole);
    const QString facts = index.data(kItemFactsRole).toString();
    painter->setFont(whole.font);
    painter->setPen(TextColor(whole));
    DrawLine(painter, text, Qt::AlignLeft | (facts.isEmpty() ? Qt::AlignVCenter : Qt::AlignTop),
        whole.text);
    painter->setFont(SmallFont(whole.font));
    painter->setOpacity(0.7);
    DrawLine(painter, text, Qt::AlignLeft | Qt::AlignBottom, facts);
    painter->restore();
}

QSize ItemRow::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int lines
        = QFontMetrics(option.font).height() + QFontMetrics(SmallFont(option.font)).height();
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return { size.width(), qMax(lines, option.decorationSize.height()) + 4 };
}

/// Over the name alone, with the picture in sight.
void ItemRow::updateEditorGeometry(
    QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &) const
{
    QRect rect = TextRect(option);
    rect.setHeight(qMin(rect.height(), editor->sizeHint().height()));
    editor->setGeometry(rect);
}

} // namespace rostrum

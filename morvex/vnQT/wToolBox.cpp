#include "wToolBox.h"

#include <QAbstractButton>
#include <QFrame>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

/// Without margins and gaps, so that rows and frames lie edge to edge.
template <typename Layout>
Layout *TightLayout()
{
    auto *layout = new Layout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

QLabel *ArrowLabel(const QString &path)
{
    auto *label = new QLabel;
    label->setPixmap(QPixmap(path));
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return label;
}

} // namespace

TitleItem::TitleItem(QFrame *frameToOpen, const QString &title, QAbstractButton *button)
    : check(button), frame(frameToOpen)
{
    Q_INIT_RESOURCE(toolbox); // a static library's resources are not found by themselves
    arrowRight = ArrowLabel(QStringLiteral(":/images/arrow_right.png"));
    arrowDown = ArrowLabel(QStringLiteral(":/images/arrow_down.png"));

    auto *row = TightLayout<QHBoxLayout>();
    row->addWidget(arrowRight);
    row->addWidget(arrowDown, /*stretch=*/0, Qt::AlignBottom); // its upper half alone is drawn on
    if (check)
        row->addWidget(check);
    if (!title.isEmpty())
        row->addWidget(new QLabel(title));
    setLayout(row); // the labels have a parent from here on and can be shown
    row->addStretch();

    SetOpen(false);
    if (check)
        connect(check, &QAbstractButton::clicked, this, &TitleItem::OnOpenClose);
}

bool TitleItem::IsEnabled() const
{
    return !check || check->isChecked();
}

void TitleItem::SetOpen(bool open)
{
    frame->setVisible(open);
    const bool isEnabled = IsEnabled();
    arrowRight->setVisible(!open && isEnabled);
    arrowDown->setVisible(open && isEnabled);
}

/// Whether the frame is open is its own state: it is asked also while the whole box is not on show.
void TitleItem::OnOpenClose()
{
    SetOpen(IsEnabled() && frame->isHidden());
}

ToolItem::ToolItem(const QString &titleText, QWidget *section, QAbstractButton *check)
    : content(section)
{
    frame = new QFrame(this);
    frame->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Plain));
    auto *inside = TightLayout<QVBoxLayout>();
    inside->addWidget(content);
    frame->setLayout(inside);

    title = new TitleItem(frame, titleText, check);
    auto *stack = TightLayout<QVBoxLayout>();
    stack->addWidget(title);
    stack->addWidget(frame);
    setLayout(stack);
    frame->hide();
}

void ToolItem::mousePressEvent(QMouseEvent *)
{
    title->OnOpenClose();
}

WToolBox::WToolBox()
{
    layout = new QVBoxLayout;
    setLayout(layout);
}

/// The stretch of the call before is taken out and not deleted. It is what addStretch would make,
/// made here so that the tools which look for leaks can tell it from others.
void WToolBox::AddItem(ToolItem *item)
{
    if (layout->count() > 1)
        layout->removeItem(layout->itemAt(layout->count() - 1));
    layout->addWidget(item);
    layout->addSpacerItem(new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding));
}

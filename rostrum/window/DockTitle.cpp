#include "DockTitle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace rostrum {
namespace {

constexpr int kIconSide = 12; // pixels

} // namespace

DockTitle::DockTitle(QDockWidget *dock) : QWidget(dock)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(6, 1, 2, 1);
    row->setSpacing(1);
    auto *label = new QLabel(dock->windowTitle());
    connect(dock, &QDockWidget::windowTitleChanged, label, &QLabel::setText);
    row->addWidget(label, 1);
    const QVector<QLineF> window{ { 2, 4, 8, 4 }, { 8, 4, 8, 10 }, { 8, 10, 2, 10 },
        { 2, 10, 2, 4 }, { 4, 2, 10, 2 }, { 10, 2, 10, 8 } };
    const QVector<QLineF> cross{ { 2.5, 2.5, 9.5, 9.5 }, { 9.5, 2.5, 2.5, 9.5 } };
    connect(AddButton("close", Icon(cross), tr("Close")), &QToolButton::clicked, dock,
        &QDockWidget::close);
    connect(AddButton("float", Icon(window), tr("Float or dock")), &QToolButton::clicked, dock,
        [dock] { dock->setFloating(!dock->isFloating()); });
}

QToolButton *DockTitle::AddButton(const char *name, const QIcon &icon, const QString &hint)
{
    auto *button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setIcon(icon);
    button->setIconSize({ kIconSide, kIconSide });
    button->setToolTip(hint);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    static_cast<QHBoxLayout *>(layout())->insertWidget(1, button);
    return button;
}

QIcon DockTitle::MenuIcon() const
{
    return Icon({ { 2, 3, 10, 3 }, { 2, 6, 10, 6 }, { 2, 9, 10, 9 } });
}

QIcon DockTitle::Icon(const QVector<QLineF> &lines) const
{
    QPixmap picture(kIconSide, kIconSide);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.4));
    painter.drawLines(lines);
    return picture;
}

} // namespace rostrum

// A text in one line, cut where there is no room; it never widens what it stands in.
#pragma once

#include <QLabel>
#include <QPainter>

namespace rostrum {

class OneLine : public QLabel
{
public:
    QSize minimumSizeHint() const override { return { 0, QLabel::minimumSizeHint().height() }; }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter,
            fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
    }
};

} // namespace rostrum

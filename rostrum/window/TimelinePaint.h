// How bars, keys and labels of the timeline look.
#pragma once

#include "Labels.h"

#include "core/Stream.h"

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <QRectF>

namespace rostrum {

/// Colours that are not in the palette but follow its brightness.
struct TimelineColors
{
    explicit TimelineColors(const QPalette &palette);

    QColor row; // behind a layer
    QColor streamRow;
    QColor selectedRow;
    QColor line; // between rows
    QColor text;
    QColor faintText;
    QColor key;
    QColor selectedKey;
    QColor now; // the current time
    QColor outside; // what lies beyond the composition
};

/// A key, told apart by shape: the left half by how it is arrived at, the right half by how it is
/// left. Linear is a pointed half, hold a square one, Bezier a round one.
void DrawKey(QPainter &painter, const QPointF &middle, Interpolation in, Interpolation out,
    const QColor &color, const QColor &edge);

/// A line of text in the middle of a place, cut with dots where it is too long.
void DrawElided(QPainter &painter, const QRect &place, const QString &text,
    Qt::TextElideMode mode = Qt::ElideRight);
/// The same for "12 = walk0024.png": the number stays whole, and of the file's name its end.
void DrawImageText(QPainter &painter, QRect place, const QString &text);

/// A layer's bar.
void DrawBar(QPainter &painter, const QRectF &bar, const QColor &color, bool selected);

} // namespace rostrum

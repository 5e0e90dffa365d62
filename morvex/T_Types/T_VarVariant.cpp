// The variant form of a value: what the editors, Clone and Propagate copy it by.
#include "T_Types/T_Var.h"

#include <QColor>
#include <QPoint>
#include <QPointF>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

namespace {

template <typename T>
T &At(void *data, int index)
{
    return static_cast<T *>(data)[index];
}

/// A TV_CHAR is set from a character, although it is given out as a number.
qint8 CharOf(const QVariant &value)
{
    const ushort code = value.toChar().unicode();
    return code < 256 ? static_cast<qint8>(code) : qint8(0);
}

} // namespace

QVariant T_Var::ValueToVariant(void *data, int index) const
{
    switch (mType) {
    case TV_BOOL:
        return At<quint8>(data, index) != 0;
    case TV_INT:
        return At<qint32>(data, index);
    case TV_SHORT:
        return int(At<qint16>(data, index));
    case TV_CHAR:
        return int(At<qint8>(data, index));
    case TV_FLOAT:
        return At<float>(data, index);
    case TV_DOUBLE:
        return At<double>(data, index);
    case TV_COLOR:
        return QColor::fromRgba(At<quint32>(data, index));
    case TV_QPOINT:
        return At<QPoint>(data, index);
    case TV_QVECTOR2D:
        return At<QVector2D>(data, index);
    case TV_QVECTOR3D:
        return At<QVector3D>(data, index);
    case TV_QTRANSFORM:
        return At<QTransform>(data, index);
    case TV_QSTRING:
        return At<QString>(data, index);
    case TV_LINKED_POINT:
        return QPointF(At<T_LinkedPoint>(data, index).x, At<T_LinkedPoint>(data, index).y);
    default:
        return QVariant();
    }
}

void T_Var::VariantToValue(const QVariant &value, void *data, int index)
{
    switch (mType) {
    case TV_BOOL:
        At<quint8>(data, index) = value.toBool();
        break;
    case TV_INT:
        At<qint32>(data, index) = value.toInt();
        break;
    case TV_SHORT:
        At<qint16>(data, index) = static_cast<qint16>(value.toInt());
        break;
    case TV_CHAR:
        At<qint8>(data, index) = CharOf(value);
        break;
    case TV_FLOAT:
        At<float>(data, index) = static_cast<float>(value.toDouble());
        break;
    case TV_DOUBLE:
        At<double>(data, index) = value.toDouble();
        break;
    case TV_COLOR:
        At<quint32>(data, index) = value.value<QColor>().rgba();
        break;
    case TV_QPOINT:
        At<QPoint>(data, index) = value.toPoint();
        break;
    case TV_QVECTOR2D: // zeros when the variant is of another kind; the identity below
        At<QVector2D>(data, index) = value.value<QVector2D>();
        break;
    case TV_QVECTOR3D:
        At<QVector3D>(data, index) = value.value<QVector3D>();
        break;
    case TV_QTRANSFORM:
        At<QTransform>(data, index) = value.value<QTransform>();
        break;
    case TV_QSTRING:
        At<QString>(data, index) = value.toString();
        break;
    case TV_LINKED_POINT:
        At<T_LinkedPoint>(data, index).x = value.toPointF().x();
        At<T_LinkedPoint>(data, index).y = value.toPointF().y();
        break;
    default:
        break;
    }
}

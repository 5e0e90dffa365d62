// The variant form of a value: what the editors, Clone and Propagate copy it by.
#include "T_Types/T_Var.h"

#include "T_Types/T_Element.h"

#include <QColor>
#include <QPoint>
#include <QPointF>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

namespace {

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
        return ElementAt<quint8>(data, index) != 0;
    case TV_INT:
        return ElementAt<qint32>(data, index);
    case TV_SHORT:
        return int(ElementAt<qint16>(data, index));
    case TV_CHAR:
        return int(ElementAt<qint8>(data, index));
    case TV_FLOAT:
        return ElementAt<float>(data, index);
    case TV_DOUBLE:
        return ElementAt<double>(data, index);
    case TV_COLOR:
        return QColor::fromRgba(ElementAt<quint32>(data, index));
    case TV_QPOINT:
        return ElementAt<QPoint>(data, index);
    case TV_QVECTOR2D:
        return ElementAt<QVector2D>(data, index);
    case TV_QVECTOR3D:
        return ElementAt<QVector3D>(data, index);
    case TV_QTRANSFORM:
        return ElementAt<QTransform>(data, index);
    case TV_QSTRING:
        return ElementAt<QString>(data, index);
    case TV_LINKED_POINT:
        return QPointF(
            ElementAt<T_LinkedPoint>(data, index).x, ElementAt<T_LinkedPoint>(data, index).y);
    default:
        return QVariant();
    }
}

void T_Var::VariantToValue(const QVariant &value, void *data, int index)
{
    switch (mType) {
    case TV_BOOL:
        ElementAt<quint8>(data, index) = value.toBool();
        break;
    case TV_INT:
        ElementAt<qint32>(data, index) = value.toInt();
        break;
    case TV_SHORT:
        ElementAt<qint16>(data, index) = static_cast<qint16>(value.toInt());
        break;
    case TV_CHAR:
        ElementAt<qint8>(data, index) = CharOf(value);
        break;
    case TV_FLOAT:
        ElementAt<float>(data, index) = static_cast<float>(value.toDouble());
        break;
    case TV_DOUBLE:
        ElementAt<double>(data, index) = value.toDouble();
        break;
    case TV_COLOR:
        ElementAt<quint32>(data, index) = value.value<QColor>().rgba();
        break;
    default:
        VariantToQtValue(value, data, index);
        break;
    }
}

/// The types whose element is an object of Qt's, and the point that is given out as one.
void T_Var::VariantToQtValue(const QVariant &value, void *data, int index)
{
    switch (mType) {
    case TV_QPOINT:
        ElementAt<QPoint>(data, index) = value.toPoint();
        break;
    case TV_QVECTOR2D: // zeros when the variant is of another kind; the identity below
        ElementAt<QVector2D>(data, index) = value.value<QVector2D>();
        break;
    case TV_QVECTOR3D:
        ElementAt<QVector3D>(data, index) = value.value<QVector3D>();
        break;
    case TV_QTRANSFORM:
        ElementAt<QTransform>(data, index) = value.value<QTransform>();
        break;
    case TV_QSTRING:
        ElementAt<QString>(data, index) = value.toString();
        break;
    case TV_LINKED_POINT:
        ElementAt<T_LinkedPoint>(data, index).x = value.toPointF().x();
        ElementAt<T_LinkedPoint>(data, index).y = value.toPointF().y();
        break;
    default:
        break;
    }
}

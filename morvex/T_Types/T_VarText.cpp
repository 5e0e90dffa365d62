// The text form of a value. Numbers go through the C runtime's printf and scanf, and the format has
// the point in every locale.
//
//     type                    out                      back
//     TV_BOOL                 "True" or "False"        "True" alone is true; through mData
//     TV_INT SHORT CHAR       %d                       %d, stored in the type's own width
//     TV_COLOR                %u                       %u
//     TV_FLOAT                %f                       %f
//     TV_DOUBLE               %f                       %f as a float: its precision is a float's
//     TV_SXY QPOINT           %d %d                    likewise
//     TV_QVECTOR2D 3D         %f for each component    likewise
//     TV_QTRANSFORM           %f nine times, by rows   likewise, as floats
//     TV_LINKED_POINT         %f %f, x and y           %lf %lf, a double's full precision
//     TV_QSTRING              Latin-1                  likewise
//     TV_STRING               element `index`          at byte `index`, cut to the capacity
//     TV_NULL                 "NULL"                   nothing
//     TV_ONGLET BOUTON LAST   the text before stays    nothing
#include "T_Types/T_Var.h"

#include "T_Types/T_Element.h"
#include "support/vnLog.h"

#include <QByteArray>
#include <QPoint>
#include <QTransform>
#include <QVector2D>
#include <QVector3D>

#include <clocale>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

char sharedText[100]; // what ValueToText returns; a type without a text form leaves it as it is

/// The decimal separator that the C runtime writes and reads now: a program that follows the user's
/// locale has a comma here in many countries.
const char *LocalPoint()
{
    return std::localeconv()->decimal_point;
}

Q_ATTRIBUTE_FORMAT_PRINTF(1, 2)
void Store(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(sharedText, sizeof sharedText, format, arguments);
    va_end(arguments);
    if (length >= 0 && length < int(sizeof sharedText))
        return;
    sharedText[0] = '\0';
    vnLogErrorLine('B', __LINE__, __FILE__);
}

/// Numbers side by side, each with six decimals and the point.
void StoreReals(const double *values, int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        char number[400]; // the largest double has 309 digits before the point
        std::snprintf(number, sizeof number, i ? " %f" : "%f", values[i]);
        text += number;
    }
    Store("%s", text.replace(LocalPoint(), ".").constData());
}

/// Reads up to `count` numbers. @return how many there were; the rest of `values` stays
template <typename T>
int ScanReals(const char *text, const char *format, T *values, int count)
{
    const QByteArray local = QByteArray(text).replace(".", LocalPoint());
    const char *at = local.constData();
    for (int i = 0; i < count; ++i) {
        int length = 0;
        if (std::sscanf(at, format, &values[i], &length) != 1)
            return i;
        at += length;
    }
    return count;
}

int ScanFloats(const char *text, float *values, int count)
{
    return ScanReals(text, "%f%n", values, count);
}

/// Stores what a "%d" finds, cut to the width of the target.
template <typename T>
void ScanInt(const char *text, T *target)
{
    int value = 0;
    if (std::sscanf(text, "%d", &value) == 1)
        *target = static_cast<T>(value);
}

template <typename T>
void ScanPair(const char *text, T *x, T *y)
{
    int first = 0;
    int second = 0;
    const int found = std::sscanf(text, "%d %d", &first, &second);
    if (found >= 1)
        *x = static_cast<T>(first);
    if (found >= 2)
        *y = static_cast<T>(second);
}

void ScanDouble(const char *text, double *target)
{
    float value = 0.0F; // a float also for a double: a file keeps no more of it
    if (ScanFloats(text, &value, 1) == 1)
        *target = double(value);
}

template <typename Vector>
void ScanVector(const char *text, Vector *target, int count)
{
    float values[3] = {};
    const int found = ScanFloats(text, values, count);
    for (int i = 0; i < found; ++i)
        (*target)[i] = values[i];
}

void StoreTransform(const QTransform &t)
{
    const double values[]
        = { t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33() };
    StoreReals(values, 9);
}

void ScanTransform(const char *text, QTransform *target)
{
    const QTransform &t = *target;
    double values[]
        = { t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33() };
    float read[9] = {};
    const int found = ScanFloats(text, read, 9);
    if (found == 0)
        return;
    for (int i = 0; i < found; ++i)
        values[i] = double(read[i]);
    target->setMatrix(values[0], values[1], values[2], values[3], values[4], values[5], values[6],
        values[7], values[8]);
}

/// The offset is in bytes here, unlike on the way out. The terminator is always there.
void ScanString(const char *text, char *target, quint16 capacity)
{
    if (capacity == 0)
        return;
    std::strncpy(target, text, capacity); // fills up with zeros
    target[capacity - 1] = '\0';
}

} // namespace

char *T_Var::ValueToText(void *data, char *, int index) const
{
    switch (mType) {
    case TV_NULL:
        Store("NULL");
        break;
    case TV_BOOL:
        Store("%s", ElementAt<quint8>(data, index) ? "True" : "False");
        break;
    case TV_INT:
        Store("%d", ElementAt<qint32>(data, index));
        break;
    case TV_STRING:
        Store("%.*s", int(mStringSize), static_cast<char *>(data) + mStringSize * index);
        break;
    case TV_COLOR:
        Store("%u", ElementAt<quint32>(data, index));
        break;
    case TV_SHORT:
        Store("%d", int(ElementAt<qint16>(data, index)));
        break;
    case TV_CHAR:
        Store("%d", int(ElementAt<qint8>(data, index)));
        break;
    case TV_SXY:
        Store("%d %d", int(ElementAt<T_ShortPoint>(data, index).x),
            int(ElementAt<T_ShortPoint>(data, index).y));
        break;
    case TV_QPOINT:
        Store("%d %d", ElementAt<QPoint>(data, index).x(), ElementAt<QPoint>(data, index).y());
        break;
    case TV_QSTRING:
        Store("%s", ElementAt<QString>(data, index).toLatin1().constData());
        break;
    default:
        RealsToText(data, index);
        break;
    }
    return sharedText;
}

void T_Var::RealsToText(void *data, int index) const
{
    switch (mType) {
    case TV_FLOAT: {
        const double value = double(ElementAt<float>(data, index));
        StoreReals(&value, 1);
        break;
    }
    case TV_DOUBLE:
        StoreReals(&ElementAt<double>(data, index), 1);
        break;
    case TV_QVECTOR2D: {
        const QVector2D v = ElementAt<QVector2D>(data, index);
        const double values[] = { double(v.x()), double(v.y()) };
        StoreReals(values, 2);
        break;
    }
    case TV_QVECTOR3D: {
        const QVector3D v = ElementAt<QVector3D>(data, index);
        const double values[] = { double(v.x()), double(v.y()), double(v.z()) };
        StoreReals(values, 3);
        break;
    }
    case TV_QTRANSFORM:
        StoreTransform(ElementAt<QTransform>(data, index));
        break;
    case TV_LINKED_POINT: {
        const double values[]
            = { ElementAt<T_LinkedPoint>(data, index).x, ElementAt<T_LinkedPoint>(data, index).y };
        StoreReals(values, 2);
        break;
    }
    default: // no text form: the text of the call before stays
        break;
    }
}

void T_Var::TextToValue(void *data, const char *text, int index)
{
    if (mType == TV_BOOL) { // through the variable's own field, whatever data is
        if (mData)
            ElementAt<quint8>(mData, index) = std::strcmp(text, "True") == 0;
        return;
    }
    if (!data)
        return;

    switch (mType) {
    case TV_INT:
        ScanInt(text, &ElementAt<qint32>(data, index));
        break;
    case TV_STRING:
        ScanString(text, static_cast<char *>(data) + index, mStringSize);
        break;
    case TV_COLOR:
        std::sscanf(text, "%u", &ElementAt<quint32>(data, index));
        break;
    case TV_SHORT:
        ScanInt(text, &ElementAt<qint16>(data, index));
        break;
    case TV_CHAR:
        ScanInt(text, &ElementAt<qint8>(data, index));
        break;
    case TV_SXY:
        ScanPair(
            text, &ElementAt<T_ShortPoint>(data, index).x, &ElementAt<T_ShortPoint>(data, index).y);
        break;
    case TV_QPOINT:
        ScanPair(text, &ElementAt<QPoint>(data, index).rx(), &ElementAt<QPoint>(data, index).ry());
        break;
    case TV_QSTRING:
        ElementAt<QString>(data, index) = QString::fromLatin1(text);
        break;
    default:
        TextToReals(data, text, index);
        break;
    }
}

void T_Var::TextToReals(void *data, const char *text, int index)
{
    switch (mType) {
    case TV_FLOAT:
        ScanFloats(text, &ElementAt<float>(data, index), 1);
        break;
    case TV_DOUBLE:
        ScanDouble(text, &ElementAt<double>(data, index));
        break;
    case TV_QVECTOR2D:
        ScanVector(text, &ElementAt<QVector2D>(data, index), 2);
        break;
    case TV_QVECTOR3D:
        ScanVector(text, &ElementAt<QVector3D>(data, index), 3);
        break;
    case TV_QTRANSFORM:
        ScanTransform(text, &ElementAt<QTransform>(data, index));
        break;
    case TV_LINKED_POINT: { // two doubles at the head of the element; its link is left alone
        T_LinkedPoint &point = ElementAt<T_LinkedPoint>(data, index);
        double values[] = { point.x, point.y };
        ScanReals(text, "%lf%n", values, 2);
        point.x = values[0];
        point.y = values[1];
        break;
    }
    default:
        break;
    }
}

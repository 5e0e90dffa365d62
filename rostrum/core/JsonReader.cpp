#include "JsonReader.h"

#include <cmath>
#include <limits>

namespace rostrum {

QString JsonReader::Place() const
{
    return index < 0 ? place : QStringLiteral("%1[%2]").arg(place).arg(index);
}

JsonReader JsonReader::At(const char *name) const
{
    const QString here = Place();
    const QString before = here.isEmpty() ? here : here + QLatin1Char('.');
    JsonReader found(value.toObject().value(QLatin1String(name)), before + QLatin1String(name),
        /*index=*/-1, error);
    if (found.value.isUndefined())
        found.Fail(QStringLiteral("it is missing"));
    return found;
}

JsonReader JsonReader::At(int element) const
{
    return { value.toArray().at(element), Place(), element, error };
}

int JsonReader::Size() const
{
    if (!value.isArray())
        Fail(QStringLiteral("it is no list"));
    return value.toArray().size();
}

qint64 JsonReader::Whole(qint64 low, qint64 high) const
{
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    const bool isWhole = std::floor(number) == number; // not for what is no number
    if (isWhole && number >= static_cast<double>(low) && number <= static_cast<double>(high))
        return static_cast<qint64>(number);
    Fail(QStringLiteral("it is no whole number from %1 to %2").arg(low).arg(high));
    return low;
}

qint32 JsonReader::Whole32(qint32 low) const
{
    return static_cast<qint32>(Whole(low, std::numeric_limits<qint32>::max()));
}

bool JsonReader::Flag() const
{
    if (!value.isBool())
        Fail(QStringLiteral("it is neither true nor false"));
    return value.toBool();
}

QString JsonReader::Text() const
{
    // Half of a surrogate pair can be held, but not be written again.
    if (!value.isString() || !value.toString().isValidUtf16())
        Fail(QStringLiteral("it is no text"));
    return value.toString();
}

void JsonReader::Numbers(double *numbers, int count) const
{
    const QJsonArray list = value.toArray();
    bool isRight = list.size() == count;
    for (int i = 0; i < count && isRight; ++i) {
        const QJsonValue number = list.at(i);
        numbers[i] = number.toDouble(std::numeric_limits<double>::quiet_NaN());
        isRight = std::isfinite(numbers[i]);
    }
    if (!isRight)
        Fail(QStringLiteral("it is no list of %1 numbers").arg(count));
}

void JsonReader::Fail(const QString &what) const
{
    const QString here = Place();
    if (error->isEmpty())
        *error = QStringLiteral("%1: %2").arg(
            here.isEmpty() ? QStringLiteral("the start") : here, what);
}

} // namespace rostrum

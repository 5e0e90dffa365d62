// A place in a JSON document, for reading what somebody else may have written or broken.
//
// Each reading asks for what must be there. The first that finds something else notes the place and
// what is wrong with it; that reading and all later ones answer a neutral value. So a reader reads
// on without asking after each step, and looks once at the end whether all went well.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

namespace rostrum {

class JsonReader
{
public:
    /// @param error takes the first thing that is wrong, with its place
    JsonReader(const QJsonValue &value, QString *error) : value(value), error(error) { }

    /// The member of an object, the element of an array.
    JsonReader At(const char *name) const;
    JsonReader At(int element) const;
    bool Has(const char *name) const { return value.toObject().contains(QLatin1String(name)); }
    bool IsObject() const { return value.isObject(); }
    /// The number of elements; 0 for what is no array, which is wrong.
    int Size() const;

    /// A whole number between two limits, both included.
    qint64 Whole(qint64 low, qint64 high) const;
    qint32 Whole32(qint32 low) const;
    bool Flag() const;
    QString Text() const;
    /// Fills `numbers` from an array of exactly `count` numbers, none of them infinite.
    void Numbers(double *numbers, int count) const;

    /// Notes that something is wrong with this place, unless something is already.
    void Fail(const QString &what) const;
    bool HasFailed() const { return !error->isEmpty(); }

private:
    JsonReader(const QJsonValue &value, const QString &place, int index, QString *error)
        : value(value), place(place), index(index), error(error)
    { }
    /// Put together only where it is wanted: most elements are read and well.
    QString Place() const;

    QJsonValue value;
    QString place; // "items[3].layers", that of the array for an element
    int index = -1; // of an element
    QString *error;
};

} // namespace rostrum

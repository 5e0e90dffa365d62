// The sweep over operations of the library: each of their host calls failing once, and each suite
// missing once. Whatever fails, nothing stays open but what the operation leaves open by rule, and
// the answer and the log line are the operation's.
//
// The lists of an operation hold names of host functions. A name stands for each call of the
// function; with a number behind it, "AEGP_GetCompNumLayers#2", for the second one alone.
#pragma once

#include "LibrarySheet.h"

#include <functional>

/// One operation as the sweep runs it.
struct SweptOperation
{
    const char *name;
    /// Runs it and answers its result in words, with its out arguments.
    std::function<QByteArray()> run;
    /// What it answers when a checked call fails.
    QByteArray failure;
    /// Functions whose failure is not told: no log line, and the steps go on.
    QByteArrayList unchecked;
    /// Puts the library into the state that the operation needs.
    std::function<void(LibrarySheet &)> prepare;
    /// Functions whose failure leaves its line, and the steps go on.
    QByteArrayList toldOnly = {};
    /// Functions that it calls both ways: checked at one place, unchecked at another.
    QByteArrayList bothWays = {};
    /// Functions that give something back and are checked nevertheless: their failure leaves its
    /// line and is the operation's.
    QByteArrayList checkedGiveBacks = {};
    /// What stays open by rule when a call failed, in the words of the host's account.
    /// @param failed the function, with its number: "AEGP_GetCompNumLayers#2"
    std::function<QByteArrayList(LibrarySheet &, const QByteArray &failed)> leftOpen = {};
};

QByteArray Bool(bool value);
/// "true 7": an answer and its out argument.
QByteArray Text(bool value, qint32 out);

/// The tests of the sweep. A program derives from it and names its operations.
class FaultSweep : public QObject
{
    Q_OBJECT

protected:
    virtual QVector<SweptOperation> Operations() const = 0;

private slots:
    void eachCallFailsOnce_data();
    void eachCallFailsOnce();
    void eachSuiteIsMissingOnce_data();
    void eachSuiteIsMissingOnce();
    void aGivingBackThatFailsIsSurvived_data();
    void aGivingBackThatFailsIsSurvived();

private:
    void AddRows() const;
};

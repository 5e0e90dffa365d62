// What a person is asked about work that was left unsaved by a session that did not end by itself, and
// about a project that another program has open.
#pragma once

#include <QString>

QT_FORWARD_DECLARE_CLASS(QWidget)

namespace rostrum {

enum class Recovery { Recover, OpenAsSaved, Cancel };

/// @param copy that is newer than the project file
Recovery AskToRecover(const QString &path, const QString &copy, QWidget *window);

enum class LeftWork { Recover, Remove, Later };

/// @param copy of a project that was never saved
LeftWork AskAboutLeftWork(const QString &copy, QWidget *window);

/// @param who has it open @return true to open it here as well
bool AskToOpenAgain(const QString &path, const QString &who, QWidget *window);

} // namespace rostrum

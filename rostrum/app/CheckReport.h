// What a walk has seen of a plug-in, in words.
#pragma once

#include "suites/Host.h"

#include <QByteArray>
#include <QByteArrayList>

namespace rostrum {

/// What the plug-in has registered: menu items and panels.
QByteArray RegisteredText(Host &host);

/// The hooks that were registered, with their arguments, in order.
QByteArray HooksText(const Trace &trace);

/// The suites and functions that were called, with how often, failures apart.
QByteArray UsedText(const Trace &trace);

/// All that is wrong: left open, complained about, unexpected. Empty when all is well.
QByteArrayList Findings(const Host &host);

} // namespace rostrum

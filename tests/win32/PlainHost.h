// A host as plain Win32 makes one: its own windows, its own message loop, and no Qt that serves them.
// Rostrum's tables are linked in; the plug-in's library brings a Qt of its own.
//
//     +-- window -------------------+
//     | before     (EDIT)           |
//     | container: the panel's place|
//     | after      (EDIT)           |
//     +-----------------------------+
//
// The Tab key in one of the fields takes the keyboard to the panel, or to the other field.
#pragma once

#include "suites/Host.h"

#include <QMap>

#include <functional>

#include <windows.h>

namespace testing {

class PlainHost
{
public:
    static constexpr UINT kQuestion = WM_APP + 7; // to the container
    static constexpr LRESULT kAnswer = 4711; // of its own procedure

    /// Serves the panels of a host object, which must live as long.
    explicit PlainHost(rostrum::Host &host);
    ~PlainHost();
    PlainHost(const PlainHost &) = delete;
    PlainHost &operator=(const PlainHost &) = delete;

    HWND Window() const { return window; }
    HWND Container() const { return container; }
    HWND Before() const { return before; }
    HWND After() const { return after; }
    /// The panel's window in the container, null when there is none.
    HWND Panel() const { return GetWindow(container, GW_CHILD); }
    WNDPROC OwnProcedure() const { return ownProcedure; }
    /// Messages of a kind that the container's own procedure has got.
    int Count(UINT message) const { return counts.value(message); }
    void ForgetCounts() { counts.clear(); }

    /// Shows the window and makes it the foreground one. @return false when it does not become that
    bool Open();
    /// The host's loop, for a time; the idle hooks are called as often as they ask for.
    void Serve(int milliseconds);
    /// The host's loop until something has come about. @return false when it has not after 10 s
    bool ServeUntil(const std::function<bool()> &isDone);

private:
    static LRESULT CALLBACK OnContainerMessage(HWND, UINT, WPARAM, LPARAM);
    void ServeOnce();
    bool TakeTab(const MSG &message) const;
    HWND MakeChild(const wchar_t *kind, DWORD style, const RECT &place) const;

    rostrum::Host &host;
    HWND window = nullptr;
    HWND container = nullptr;
    HWND before = nullptr;
    HWND after = nullptr;
    WNDPROC ownProcedure = nullptr;
    QMap<UINT, int> counts;
    ULONGLONG nextIdle = 0; // ms since the system's start
};

} // namespace testing

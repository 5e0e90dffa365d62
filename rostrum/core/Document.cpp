#include "Document.h"

namespace rostrum {

Project &Document::Edit(const QByteArray &what)
{
    if (!changeOpen) {
        changeOpen = true;
        changeName = what;
        before = project;
    }
    return project;
}

void Document::Replace(const Project &other)
{
    // It may be this document's own. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const Project next = other;
    const int count = replaceCount;
    const int version = historyVersion;
    *this = Document();
    project = next;
    replaceCount = count + 1;
    historyVersion = version + 1;
}

void Document::StartGroup(const QByteArray &name)
{
    if (depth++ > 0)
        return; // an inner group is part of the outer one, its name is not used
    CloseChange();
    changeOpen = true;
    changeName = name;
    before = project;
}

bool Document::EndGroup()
{
    if (depth == 0)
        return false;
    if (--depth == 0)
        CloseChange();
    return true;
}

QByteArray Document::CloseLooseEnds()
{
    QByteArray leftOpen = depth > 0 ? changeName : QByteArray();
    depth = 0;
    CloseChange();
    return leftOpen;
}

void Document::CloseChange()
{
    if (!changeOpen)
        return;
    changeOpen = false;
    if (project != before) {
        undo << Entry{ changeName, before };
        redo.clear();
        ++historyVersion;
    }
    before = Project();
}

bool Document::Undo()
{
    if (depth > 0)
        return false;
    CloseChange();
    if (undo.isEmpty())
        return false;
    Exchange(undo, redo);
    return true;
}

bool Document::Redo()
{
    if (depth > 0)
        return false;
    CloseChange();
    if (redo.isEmpty())
        return false;
    Exchange(redo, undo);
    return true;
}

void Document::Exchange(QVector<Entry> &from, QVector<Entry> &to)
{
    Entry entry = from.takeLast();
    entry.other.KeepIdsOf(project);
    std::swap(entry.other, project);
    to << entry;
    ++historyVersion;
}

QVector<QByteArray> Document::UndoNames() const
{
    QVector<QByteArray> names;
    for (const Entry &entry : undo)
        names << entry.name;
    return names;
}

QVector<QByteArray> Document::RedoNames() const
{
    QVector<QByteArray> names;
    for (const Entry &entry : redo)
        names << entry.name;
    return names;
}

} // namespace rostrum

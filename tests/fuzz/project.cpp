// Any bytes as a project file: the reader must neither crash nor hang, and what it takes must be a
// project that could have been made: it walks to an end, it is written, and comes back the same.

#include "core/ProjectFile.h"
#include "core/ProjectWriting.h"

#include <QJsonDocument>
#include <QtDebug>

#include <sanitizer/lsan_interface.h>

#include <cstdlib>

using namespace rostrum;

namespace {

const QString kPath = QStringLiteral("/fuzz/project.rostrum");

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

QByteArray Written(const Project &project)
{
    return QJsonDocument(WrittenProject(project, QDir(QStringLiteral("/fuzz")))).toJson();
}

/// Qt 5.15 leaks what it has read of a text that breaks off, or that names a member twice; so leaks
/// are looked for where the project's own text is read, not here.
LoadedProject ParseForeign(const QByteArray &bytes)
{
    const __lsan::ScopedDisabler unwatched;
    return ParseProject(bytes, kPath);
}

/// Every item is met once, and every layer's source and parent is there.
void Walk(const Project &project)
{
    int met = 0;
    for (ItemId item = project.RootFolder(); item; item = project.NextInWalk(item), ++met) {
        Require(met < project.ItemCount());
        const Composition *composition = project.FindComposition(item);
        if (!composition)
            continue;
        for (const LayerPtr &layer : composition->layers) {
            Require(layer->kind != LayerKind::Source || project.SourceOf(*layer));
            Require(!layer->parent || project.FindLayer(item, layer->parent));
            StreamValue value{};
            project.StreamValueAt(*layer, kTimeRemap, Time{ 3, 25 }, &value); // unchecked: ends
        }
    }
    Require(met == project.ItemCount());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const LoadedProject loaded = ParseForeign(bytes);
    if (!loaded.Ok()) {
        Require(loaded.project == Project());
        return 0;
    }
    Walk(loaded.project);
    const QByteArray text = Written(loaded.project);
    const LoadedProject again = ParseProject(text, kPath);
    Require(again.Ok());
    Require(again.project == loaded.project);
    Require(Written(again.project) == text);
    return 0;
}

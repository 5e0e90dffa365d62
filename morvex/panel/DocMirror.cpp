#include "panel/DocMirror.h"

#include "panel/Doc.h"

#include "vnAE/vipLi.h"

const std::array<DocRead, 11> kDocReads{ {
    StreamRead{ AEGP_LayerStream_POSITION, &Doc::posX, &Doc::posY },
    KeyRead{ AEGP_LayerStream_POSITION, &Doc::keyPos, &Doc::keyPosBis },
    StreamRead{ AEGP_LayerStream_SCALE, &Doc::scale, nullptr },
    KeyRead{ AEGP_LayerStream_SCALE, &Doc::keyScale, nullptr },
    StreamRead{ AEGP_LayerStream_ROTATION, &Doc::rotation, nullptr },
    KeyRead{ AEGP_LayerStream_ROTATION, &Doc::keyRotation, nullptr },
    StreamRead{ AEGP_LayerStream_OPACITY, &Doc::opacity, nullptr },
    EfxRead{ &vipLi::EfxKeyBlur, 0, &Doc::blur },
    EfxRead{ &vipLi::EfxKeyFiltre, 0, &Doc::hue },
    EfxRead{ &vipLi::EfxKeyFiltre, 1, &Doc::lightness },
    EfxRead{ &vipLi::EfxKeyFiltre, 2, &Doc::saturation },
} };

namespace {

/// How each kind of read gets its value. A result that says failure is not looked at: the library
/// has left the field as it has to be.
struct Reader
{
    void operator()(const StreamRead &read) const
    {
        qint32 dropped = 0;
        qint32 &second = read.second ? doc.*read.second : dropped;
        library.GetStreamValue(read.streamNumber, frame, doc.*read.first, second);
    }

    void operator()(const KeyRead &read) const
    {
        const bool hasKey = library.HasKey(read.streamNumber, frame);
        doc.*read.field = hasKey;
        if (read.alsoInto)
            doc.*read.alsoInto = hasKey;
    }

    void operator()(const EfxRead &read) const
    {
        library.GetEfxValue(library.*read.installedKey, frame, read.param, doc.*read.field);
    }

    vipLi &library;
    qint32 frame;
    Doc &doc;
};

} // namespace

void ReadIntoDoc(vipLi &library, qint32 frame, const DocRead &read, Doc &doc)
{
    std::visit(Reader{ library, frame, doc }, read);
}

void ReadDocFromHost(vipLi &library, Doc &doc)
{
    const qint32 frame = doc.GetRow();
    library.SetCurrentColumn(doc.GetCol()); // unchecked: without a layer each read fails by itself
    for (const DocRead &read : kDocReads)
        ReadIntoDoc(library, frame, read, doc);
}

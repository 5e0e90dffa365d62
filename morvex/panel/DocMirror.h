// The mirror: which of the host's values stand in which field of the Doc, and how they come there.
//
//     1  position      GetStreamValue 1          posX, posY
//     2                HasKey 1                  keyPos, keyPosBis
//     3  scale         GetStreamValue 2          scale        the second component is dropped
//     4                HasKey 2                  keyScale
//     5  rotation      GetStreamValue 3          rotation     likewise
//     6                HasKey 3                  keyRotation
//     7  opacity       GetStreamValue 4          opacity      likewise
//     8  blur          GetEfxValue EfxKeyBlur 0  blur
//     9  colour filter GetEfxValue EfxKeyFiltre 0, 1, 2       hue, lightness, saturation
//
// The order is that of the host calls; the editors stand in another.
#pragma once

#include <QtGlobal>

#include <array>
#include <variant>

class Doc;
class vipLi;

/// The first two components of a layer stream. A read that fails makes both -1.
struct StreamRead
{
    qint32 streamNumber;
    qint32 Doc::*first;
    qint32 Doc::*second; // null: dropped
};

/// Whether a layer stream has a key at the frame; a read that fails is none.
struct KeyRead
{
    qint32 streamNumber;
    bool Doc::*field;
    bool Doc::*alsoInto; // null: nowhere else
};

/// A parameter of an effect on the layer: 0 when the layer does not wear it. A read that fails, say
/// since the host has no such effect, leaves the field as it was.
struct EfxRead
{
    qint32 vipLi::*installedKey;
    qint32 param;
    qint32 Doc::*field;
};

using DocRead = std::variant<StreamRead, KeyRead, EfxRead>;

/// The eleven reads, in the order of the host calls.
extern const std::array<DocRead, 11> kDocReads;

/// One read at a frame, from the library's current layer into the document. [host] [layer]
void ReadIntoDoc(vipLi &library, qint32 frame, const DocRead &read, Doc &doc);

/// Makes the document's column the library's current one and does all eleven reads at the
/// document's row. Nothing is shown by this: the dock's UpdateAll is the caller's step. [host]
void ReadDocFromHost(vipLi &library, Doc &doc);

// Drawings for tests: image files of kinds that QImage reads but never writes, byte by byte.
#pragma once

#include <QByteArray>

namespace drawings {

/// A PNG file: signature, then chunks of length, name, data and checksum.
/// @param depth bits of a sample; @param colorType 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6
/// RGBA
/// @param palette chunk PLTE, @param transparency chunk tRNS, each left out when empty
/// @param pixel bytes of one pixel (or of the byte that holds several), repeated all over
/// @param rowBytes bytes of one row, a multiple of pixel's
QByteArray Png(int width, int height, int depth, int colorType, const QByteArray &palette,
    const QByteArray &transparency, const QByteArray &pixel, int rowBytes);

/// A TGA file of one colour: an 18-byte header, then the pixels, from the bottom row up.
/// @param type 2 true colour, 3 grey, 10 true colour run by run
/// @param pixel bytes of one pixel, blue first; @param alphaBits as the header tells them
QByteArray Tga(int width, int height, int type, const QByteArray &pixel, int alphaBits);

/// A PSD file: RGB, 8 bits, without layers, its pixels all 200, plane by plane.
QByteArray Psd(int width, int height);

} // namespace drawings

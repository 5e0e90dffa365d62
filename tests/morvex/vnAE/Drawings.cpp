#include "Drawings.h"

namespace drawings {
namespace {

QByteArray Big(quint32 value, int bytes)
{
    QByteArray out;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        out += char(value >> shift & 0xFF);
    return out;
}

QByteArray Little(quint32 value, int bytes)
{
    QByteArray out;
    for (int i = 0; i < bytes; ++i)
        out += char(value >> 8 * i & 0xFF);
    return out;
}

/// The checksum of a chunk, bit by bit: polynomial 0xEDB88320, reflected.
quint32 Checksum(const QByteArray &bytes)
{
    quint32 sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = sum & 1 ? sum >> 1 ^ 0xEDB88320 : sum >> 1;
    }
    return ~sum;
}

QByteArray Chunk(const QByteArray &name, const QByteArray &data)
{
    return Big(quint32(data.size()), 4) + name + data + Big(Checksum(name + data), 4);
}

} // namespace

QByteArray Png(int width, int height, int depth, int colorType, const QByteArray &palette,
    const QByteArray &transparency, const QByteArray &pixel, int rowBytes)
{
    const QByteArray header = Big(quint32(width), 4) + Big(quint32(height), 4) + char(depth)
        + char(colorType) + QByteArray(3, '\0');
    const QByteArray row = '\0' + pixel.repeated(rowBytes / pixel.size()); // filter 0 in front
    QByteArray file = "\x89PNG\r\n\x1A\n" + Chunk("IHDR", header);
    if (!palette.isEmpty())
        file += Chunk("PLTE", palette);
    if (!transparency.isEmpty())
        file += Chunk("tRNS", transparency);
    const QByteArray packed = qCompress(row.repeated(height)).mid(4); // Qt puts the length in front
    return file + Chunk("IDAT", packed) + Chunk("IEND", QByteArray());
}

QByteArray Tga(int width, int height, int type, const QByteArray &pixel, int alphaBits)
{
    const QByteArray header = QByteArray(2, '\0') + char(type) + QByteArray(9, '\0')
        + Little(quint32(width), 2) + Little(quint32(height), 2) + char(8 * pixel.size())
        + char(alphaBits);
    if (type != 10)
        return header + pixel.repeated(width * height);
    const QByteArray run = char(0x80 | (width - 1)) + pixel; // one run a row, of up to 128 pixels
    return header + run.repeated(height);
}

QByteArray Psd(int width, int height)
{
    const QByteArray header = "8BPS" + Big(1, 2) + QByteArray(6, '\0') + Big(3, 2)
        + Big(quint32(height), 4) + Big(quint32(width), 4) + Big(8, 2) + Big(3, 2);
    const QByteArray noSections = Big(0, 4) + Big(0, 4) + Big(0, 4);
    return header + noSections + Big(0, 2) + QByteArray(3 * width * height, char(200));
}

} // namespace drawings

// The plug-in property list: what the host reads in the library file before it loads it.
//
// A resource of type "PIPL". Integers are little-endian, and so are the four-character codes, so
// that they read reversed in a dump.
//
//     offset 0   2 bytes   header word, 1
//            2   4         version of the list, 0
//            6   4         number of properties, 5
//           10             the properties, each of
//                              4   vendor code "8BIM"
//                              4   key
//                              4   identifier, 0
//                              4   length of the data in bytes, a multiple of four
//                              .   the data, zero bytes behind it up to the length
//
// A text's data is either a length byte and the text, or the text and a zero byte; the length of
// the data counts the zero bytes that pad it: "vnMorvex" is 1 + 8 bytes and 3 of padding, 12.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

constexpr char kPropertyListResourceType[] = "PIPL";
constexpr int kPropertyListResourceId = 16000;
constexpr int kPropertyListLanguage = 1033; // English, United States
constexpr std::size_t kPropertyListSize = 142; // bytes

extern const std::array<std::uint8_t, kPropertyListSize> kPropertyList;

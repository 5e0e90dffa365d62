#include "T_Types/T_Stream.h"

#include <cstring>

std::FILE *T_WriteStream = nullptr;
std::FILE *T_ReadStream = nullptr;

char *ReadLine(char *buffer, int size)
{
    if (!T_ReadStream || !std::fgets(buffer, size, T_ReadStream))
        return nullptr;
    const size_t length = std::strlen(buffer); // 0 when the line begins with a zero byte
    if (length > 0 && buffer[length - 1] == '\n')
        buffer[length - 1] = '\0';
    return buffer;
}

#include "AllocationCount.h"

#include <cstddef>

namespace {

long count
    = 0; // the main thread's alone matters, a stray other one would only be seen as a failure

} // namespace

extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t number, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);

// In the program itself these come before the C library's own, for every library in the process.
__attribute__((visibility("default"))) void *malloc(std::size_t size)
{
    ++count;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void *calloc(std::size_t number, std::size_t size)
{
    ++count;
    return __libc_calloc(number, size);
}

__attribute__((visibility("default"))) void *realloc(void *block, std::size_t size)
{
    ++count;
    return __libc_realloc(block, size);
}
}

long testing::AllocationCount()
{
    return count;
}

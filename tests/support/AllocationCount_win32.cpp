#include "AllocationCount.h"

#include <cstddef>

namespace {

// The main thread's alone matters, a stray other one would only be seen as a failure.
long count = 0;

} // namespace

extern "C" {

void *__real_malloc(std::size_t size);
void *__real_calloc(std::size_t number, std::size_t size);
void *__real_realloc(void *block, std::size_t size);

// The linker leads every call here, those of Qt and of the C++ library too.
void *__wrap_malloc(std::size_t size)
{
    ++count;
    return __real_malloc(size);
}

void *__wrap_calloc(std::size_t number, std::size_t size)
{
    ++count;
    return __real_calloc(number, size);
}

void *__wrap_realloc(void *block, std::size_t size)
{
    ++count;
    return __real_realloc(block, size);
}
}

long testing::AllocationCount()
{
    return count;
}

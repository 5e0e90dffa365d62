// The elements behind an untyped address: the one place where a variable's code becomes a C++ type.
#pragma once

/// Element `index` of the array that stands at `data`; a plain field is element 0 of itself.
template <typename T>
T &ElementAt(void *data, int index)
{
    return static_cast<T *>(data)[index];
}

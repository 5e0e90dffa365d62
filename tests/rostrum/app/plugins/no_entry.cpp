// A library with a function, but without the one that a host looks for.
extern "C" __attribute__((visibility("default"))) int NotTheEntryPoint()
{
    return 0;
}

// A library without any plug-in in it.
extern "C" __attribute__((visibility("default"))) int answer()
{
    return 42;
}

extern "C" __attribute__((visibility("default"))) int somethingElse()
{
    return 1;
}

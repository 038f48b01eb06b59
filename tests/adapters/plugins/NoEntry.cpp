extern "C" [[gnu::visibility("default")]] int corvane_no_plugin() {
    return 0;
}

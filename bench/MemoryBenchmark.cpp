void registerMemoryBenchmarks(const char*) {}
int runMemoryChild(int, char**) { return -1; }

void registerNameBenchmarks() {}

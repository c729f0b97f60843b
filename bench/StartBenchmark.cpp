void registerStartBenchmarks() {}

#include <benchmark/benchmark.h>

#include "Benchmarks.h"

int main(int argumentCount, char** arguments) {
  benchmark::Initialize(&argumentCount, arguments);
  if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments)) {
    return 2;
  }
  Zorv::Benchmarks::registerAnalysis();
  Zorv::Benchmarks::registerCellCache();
  Zorv::Benchmarks::registerLive();
  Zorv::Benchmarks::registerLoader();
  Zorv::Benchmarks::registerMemory();
  Zorv::Benchmarks::registerPicture();
  Zorv::Benchmarks::registerTable();
  Zorv::Benchmarks::registerThreads();
  Zorv::Benchmarks::registerVisuals();
  Zorv::Benchmarks::registerWholeTable();
  Zorv::Benchmarks::registerWriters();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

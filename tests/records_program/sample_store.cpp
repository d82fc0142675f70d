#include <QCoreApplication>
#include <cstdlib>
#include <iostream>

#include "adapters/sql/open_store.h"
#include "records_program/sample_records.h"

/// `sample_store STORE [UNITS]` fills a store for those who look at it from outside: with the small run and its later
/// PASS, and so many whole roads.
int main(int argc, char** argv) {
  using namespace orvane;
  const QCoreApplication application(argc, argv);
  if (argc < 2) return 64;
  const int units = argc > 2 ? std::atoi(argv[2]) : 0;
  try {
    const auto store = OpenStore(argv[1]);
    store->Finish(test::SmallRun());
    store->Finish(test::LaterPass());
    for (int i = 1; i <= units; ++i) store->Finish(test::WholeRoad(i));
    return 0;
  } catch (const StoreFault& fault) {
    std::cerr << fault.what() << std::endl;
    return 74;
  }
}

// What a variant costs: sharing (copy, assignment) against std::shared_ptr,
// construction, integer text against std::to_string, and a name look-up in a
// short argument list against std::map.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <thread>

#include "vexa/generic/varg_list.hpp"
#include "vexa/types/variant.hpp"

namespace {

using namespace vexa;

void copy_variant(benchmark::State& state) {
  types::variant const source(42);
  for (auto _ : state) {
    types::variant copy(source);
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(copy_variant);

void copy_shared_ptr(benchmark::State& state) {
  auto const source = std::make_shared<int>(42);
  for (auto _ : state) {
    std::shared_ptr<int> copy(source);
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(copy_shared_ptr);

void assign_variant(benchmark::State& state) {
  types::variant const first(1), second("two");
  types::variant target;
  for (auto _ : state) {
    target = first;
    benchmark::DoNotOptimize(target);
    target = second;
    benchmark::DoNotOptimize(target);
  }
}
BENCHMARK(assign_variant);

void assign_shared_ptr(benchmark::State& state) {
  auto const first = std::make_shared<int>(1);
  auto const second = std::make_shared<int>(2);
  std::shared_ptr<int> target;
  for (auto _ : state) {
    target = first;
    benchmark::DoNotOptimize(target);
    target = second;
    benchmark::DoNotOptimize(target);
  }
}
BENCHMARK(assign_shared_ptr);

void construct_variant_int(benchmark::State& state) {
  int value = 42;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    types::variant v(value);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(construct_variant_int);

void construct_shared_ptr_int(benchmark::State& state) {
  int value = 42;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    auto p = std::make_shared<int>(value);
    benchmark::DoNotOptimize(p);
  }
}
BENCHMARK(construct_shared_ptr_int);

void construct_variant_short_text(benchmark::State& state) {
  char const* text = "short";
  for (auto _ : state) {
    benchmark::DoNotOptimize(text);
    types::variant v(text);
    benchmark::DoNotOptimize(v);
  }
}
BENCHMARK(construct_variant_short_text);

void construct_shared_ptr_short_text(benchmark::State& state) {
  char const* text = "short";
  for (auto _ : state) {
    benchmark::DoNotOptimize(text);
    auto p = std::make_shared<std::string>(text);
    benchmark::DoNotOptimize(p);
  }
}
BENCHMARK(construct_shared_ptr_short_text);

void variant_int_as_string(benchmark::State& state) {
  types::variant const v(-1234567);
  for (auto _ : state) benchmark::DoNotOptimize(v.as_string());
}
BENCHMARK(variant_int_as_string);

void std_to_string_int(benchmark::State& state) {
  int value = -1234567;
  for (auto _ : state) {
    benchmark::DoNotOptimize(value);
    benchmark::DoNotOptimize(std::to_string(value));
  }
}
BENCHMARK(std_to_string_int);

char const* const names[] = {"file", "line", "column", "reason", "count"};

void varg_list_find_by_name(benchmark::State& state) {
  generic::varg_list const list(generic::argument(names[0], "a.cfg"), generic::argument(names[1], 12),
                                generic::argument(names[2], 7), generic::argument(names[3], "syntax"),
                                generic::argument(names[4], 3));
  strings::ustring8 const wanted(names[state.range(0)]);
  for (auto _ : state) benchmark::DoNotOptimize(&list[wanted]);
}
BENCHMARK(varg_list_find_by_name)->Arg(0)->Arg(4);

void std_map_find_by_name(benchmark::State& state) {
  std::map<std::string, types::variant> map;
  map.emplace(names[0], "a.cfg");
  map.emplace(names[1], 12);
  map.emplace(names[2], 7);
  map.emplace(names[3], "syntax");
  map.emplace(names[4], 3);
  std::string const wanted(names[state.range(0)]);
  for (auto _ : state) benchmark::DoNotOptimize(&map.find(wanted)->second);
}
BENCHMARK(std_map_find_by_name)->Arg(0)->Arg(4);

// The standard library counts without atomics only while the process has
// never had a second thread; after one has run (as in most larger programs)
// every shared_ptr copy is an atomic update. These run last because the
// switch cannot be undone.
void copy_shared_ptr_after_a_thread(benchmark::State& state) {
  std::thread([] {}).join();
  copy_shared_ptr(state);
}
BENCHMARK(copy_shared_ptr_after_a_thread);

void assign_shared_ptr_after_a_thread(benchmark::State& state) {
  std::thread([] {}).join();
  assign_shared_ptr(state);
}
BENCHMARK(assign_shared_ptr_after_a_thread);

}  // namespace

BENCHMARK_MAIN();

// What a line costs by the grammar, beside what reading it costs at least: the same lines, taken
// from the same stream, cut by hand, their numbers read by the standard library.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>

#include "files/line_grammar.h"

namespace {

using ZOR::reg::ParsedPoint;

constexpr int lineCount = 1'000'000;

/// An import of a million targets in national coordinates, to a tenth of a millimetre.
std::string surveyText() {
  std::mt19937_64 random(20240517);
  std::uniform_real_distribution<double> offset(-1000.0, 1000.0);
  std::string text;
  char line[128];
  for (int i = 0; i < lineCount; ++i) {
    const int length = std::snprintf(line, sizeof line, "P%d %.4f %.4f %.4f\n", i, 4500000.0 + offset(random),
                                     500000.0 + offset(random), offset(random));
    text.append(line, static_cast<std::size_t>(length));
  }
  return text;
}

const std::string& survey() {
  static const std::string text = surveyText();
  return text;
}

// The least that a reader can do: it checks nothing but that a number is there.

bool byFromChars(const std::string& line, ParsedPoint& point) {
  const char* end = line.data() + line.size();
  const std::size_t blank = line.find(' ');
  if (blank == std::string::npos) return false;
  point.name.assign(line, 0, blank);
  const char* at = line.data() + blank;
  for (double* value : {&point.x, &point.y, &point.z}) {
    const std::from_chars_result result = std::from_chars(at + 1, end, *value);
    if (result.ec != std::errc()) return false;
    at = result.ptr;
  }
  point.w = 1.0;
  return at == end;
}

bool byStrtod(const std::string& line, ParsedPoint& point) {
  const std::size_t blank = line.find(' ');
  if (blank == std::string::npos) return false;
  point.name.assign(line, 0, blank);
  const char* at = line.data() + blank;
  for (double* value : {&point.x, &point.y, &point.z}) {
    char* next = nullptr;
    *value = std::strtod(at, &next);
    if (next == at) return false;
    at = next;
  }
  point.w = 1.0;
  return *at == '\0';
}

template <bool (*parse)(const std::string&, ParsedPoint&)>
void readLines(benchmark::State& state) {
  const std::string& text = survey();
  for (auto _ : state) {
    std::istringstream stream(text);
    std::string line;
    ParsedPoint point;
    int read = 0;
    while (std::getline(stream, line) && parse(line, point)) {
      benchmark::DoNotOptimize(point);
      ++read;
    }
    if (read != lineCount) state.SkipWithError("a line wasn't read");
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}

BENCHMARK(readLines<ZOR::reg::parseLineNXYZ>)->Name("lines/grammar")->Unit(benchmark::kMillisecond);
BENCHMARK(readLines<byFromChars>)->Name("lines/bare_from_chars")->Unit(benchmark::kMillisecond);
BENCHMARK(readLines<byStrtod>)->Name("lines/bare_strtod")->Unit(benchmark::kMillisecond);

}  // namespace

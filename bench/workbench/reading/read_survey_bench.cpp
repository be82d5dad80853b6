// What it costs to read a file whose form has to be found out, beside the module's grammar on the same
// points in its own form, and beside cutting such lines by hand.
#include <benchmark/benchmark.h>

#include <algorithm>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <random>
#include <sstream>
#include <string>

#include "files/line_grammar.h"
#include "workbench/reading/read_survey.h"
#include "workbench/reading/staged_form.h"

namespace {

using namespace tiepoint::workbench;

constexpr int lineCount = 1'000'000;

/// A million targets in national coordinates, to a tenth of a millimetre.
std::string surveyText(const char* header, const char* format) {
  std::mt19937_64 random(20240517);
  std::uniform_real_distribution<double> offset(-1000.0, 1000.0);
  std::string text = header;
  char line[128];
  for (int i = 0; i < lineCount; ++i) {
    const int length = std::snprintf(line, sizeof line, format, i, 4500000.0 + offset(random),
                                     500000.0 + offset(random), offset(random));
    text.append(line, static_cast<std::size_t>(length));
  }
  return text;
}

const std::string& csv() {
  static const std::string text = surveyText("Name,X,Y,Z\n", "P%d,%.4f,%.4f,%.4f\n");
  return text;
}

const std::string& plain() {
  static const std::string text = surveyText("", "P%d %.4f %.4f %.4f\n");
  return text;
}

void readWithHeader(benchmark::State& state) {
  const std::string& text = csv();
  for (auto _ : state) {
    std::size_t at = 0;
    const ByteSource source = [&](char* into, std::size_t size) {
      const std::size_t count = std::min(size, text.size() - at);
      std::memcpy(into, text.data() + at, count);
      at += count;
      return count;
    };
    const ReadSurvey survey = readSurvey(source, {});
    if (survey.points.size() != lineCount) state.SkipWithError("a line wasn't read");
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}

void stage(benchmark::State& state) {
  const SurveyPoint point{"P1", 4500000.1234, 500000.4321, -12.3456, 1.0, 1};
  for (auto _ : state) benchmark::DoNotOptimize(stagedLine(point, false));
  state.SetItemsProcessed(state.iterations());
}

void readByGrammar(benchmark::State& state) {
  for (auto _ : state) {
    std::istringstream stream(plain());
    std::string line;
    ZOR::reg::ParsedPoint point;
    int read = 0;
    while (std::getline(stream, line) && ZOR::reg::parseLineNXYZ(line, point)) ++read;
    if (read != lineCount) state.SkipWithError("a line wasn't read");
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}

/// The least that a reader can do with commas: it checks nothing but that a number is there.
bool cut(const std::string& line, SurveyPoint& point) {
  const char* end = line.data() + line.size();
  const std::size_t comma = line.find(',');
  if (comma == std::string::npos) return false;
  point.name.assign(line, 0, comma);
  const char* at = line.data() + comma;
  for (double* value : {&point.x, &point.y, &point.z}) {
    const std::from_chars_result result = std::from_chars(at + 1, end, *value);
    if (result.ec != std::errc()) return false;
    at = result.ptr;
  }
  return at == end;
}

void readByHand(benchmark::State& state) {
  for (auto _ : state) {
    std::istringstream stream(csv());
    std::string line;
    std::getline(stream, line);
    std::vector<SurveyPoint> points;
    for (SurveyPoint point; std::getline(stream, line) && cut(line, point);) points.push_back(point);
    if (points.size() != lineCount) state.SkipWithError("a line wasn't read");
  }
  state.SetItemsProcessed(state.iterations() * lineCount);
}

BENCHMARK(readWithHeader)->Name("survey/found_out")->Unit(benchmark::kMillisecond);
BENCHMARK(readByGrammar)->Name("survey/module_grammar")->Unit(benchmark::kMillisecond);
BENCHMARK(readByHand)->Name("survey/bare_from_chars")->Unit(benchmark::kMillisecond);
BENCHMARK(stage)->Name("survey/staged_line");

}  // namespace

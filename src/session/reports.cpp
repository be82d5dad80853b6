// The HTML reports of a session.
#include <boost/filesystem/path.hpp>
#include <codecvt>
#include <fstream>
#include <locale>

#include "files/html_reports.h"
#include "session/multi_registrator.h"
#include "session/output_files.h"

namespace ZOR::reg {

namespace {

constexpr std::uint64_t htmlFormat = 1;

}  // namespace

ReportSource MultiRegistrator::reportSource() const {
  return {sessionPoints,
          groupNames,
          commonNames,
          results.groupTransforms,
          results.commonPoints,
          pointDiscrepancies,
          results.registrationMethod,
          actualIterations,
          maxIterations,
          actualDiscrepancy,
          convergenceCriteria};
}

std::wstring MultiRegistrator::getPointsReport(RefPointIdSet points) {
  reportText = pointsReport(reportSource(), points);
  return reportText;
}

std::wstring MultiRegistrator::getGroupsReport(GroupIdSet groups) {
  reportText = groupsReport(reportSource(), groups);
  return reportText;
}

std::wstring MultiRegistrator::getResultsReport() {
  reportText = resultsReport(reportSource());
  return reportText;
}

void MultiRegistrator::getReportFormats(std::map<std::uint64_t, std::string>& formats) {
  formats = {{htmlFormat, "HTML document (*.html)|*.html"}};
}

bool MultiRegistrator::saveReport(std::string path, std::uint64_t format) {
  if (format != htmlFormat) return false;
  // No locale owns it: one that finds no memory for itself would lose it.
  std::codecvt_utf8<wchar_t, 0x10ffff, std::codecvt_mode(0)> utf8(1);
  auto out = openForWriting<std::wofstream>(boost::filesystem::path(path));
  out.imbue(std::locale(std::locale::classic(), &utf8));
  if (out) out << reportText;
  out.close();
  return true;
}

}  // namespace ZOR::reg

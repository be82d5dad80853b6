#include "workbench/session/staging_folder.h"

#include <boost/filesystem.hpp>
#include <boost/filesystem/fstream.hpp>
#include <iterator>

#include "workbench/io/text_encoding.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace fs = boost::filesystem;

StagingFolder::StagingFolder() {
  boost::system::error_code error;
  const fs::path path = fs::temp_directory_path(error) / fs::unique_path("tiepoint-%%%%-%%%%-%%%%-%%%%");
  folder = path.string();
  if (!error) fs::create_directory(path, error);
  if (!error) return;
  Refusal refusal{RefusalKind::noTemporaryFolder};
  refusal.cause = error.message();
  throw Refused(std::move(refusal));
}

StagingFolder::~StagingFolder() {
  boost::system::error_code ignored;
  fs::remove_all(fs::path(wideFromUtf8(folder)), ignored);
}

std::string StagingFolder::file(const std::string& name) const {
  return (fs::path(wideFromUtf8(folder)) / fs::path(wideFromUtf8(name))).string();
}

std::string StagingFolder::content(const std::string& name) const {
  fs::ifstream in(fs::path(wideFromUtf8(file(name))), std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace tiepoint::workbench

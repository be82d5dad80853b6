// An open document of the host: a drawing that is kept in memory alone, and what shows it.
#pragma once

#include <string>
#include <vector>

#include "platform/host/document.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_ge_matrix3d.h"
#include "transient_service.h"

namespace foreign {

class Document final : public HostDocument, public HostObject {
 public:
  Document(Switchboard& switchboard, Graphics& graphics);

  OdDbDatabasePtr database() override;
  HostTransientService* transientService() override;
  bool isReady() const override;

  /// Ends the document with its service and its view, and lets the drawing go.
  void close();

  TransientService& service() { return transients; }
  /// How many hold the drawing beside this document, or hold one of its objects open.
  std::size_t holders() const;

  // The host's own way to the drawing, which no fault reaches.

  /// A cloud that hasn't been moved.
  void addCloud(const std::string& name);
  OdGeMatrix3d cloudMatrix(const std::string& name) const;
  std::size_t groupCount() const;
  /// Empty when there is no such group.
  ZOR::StoredPointArray groupPoints(const std::string& name) const;

 private:
  OdDbDatabasePtr drawing;
  TransientService transients;
};

}  // namespace foreign

// A host that another project might write: it includes every header that a host needs, calls into
// both shared libraries, and finds the module's file.
#include <fstream>
#include <iostream>
#include <type_traits>

#include "platform/host/application.h"
#include "platform/host/command_factory.h"
#include "platform/host/document.h"
#include "platform/host/exports.h"
#include "platform/host/file_dialog.h"
#include "platform/host/message_line.h"
#include "platform/host/profile.h"
#include "platform/host/transient_service.h"
#include "platform/host/view.h"
#include "platform/host/zor_variant.h"
#include "platform/pointclouds/point_cloud_definition.h"
#include "platform/pointclouds/points_repository.h"
#include "platform/sdk/od_rx_module.h"
#include "records/display_group.h"
#include "session/i_multi_registrator.h"

static_assert(std::is_abstract_v<ZOR::reg::iMultiRegistrator>);
static_assert(std::is_same_v<ZOR::reg::GetMultiRegistratorFunction, ZOR::reg::iMultiRegistrator* (*)()>);

int main() {
  ZOR::reg::RigidTransform transform;
  transform.translation = {1.0, 2.0, 3.0};
  const OdGePoint3d moved = ZOR::reg::apply(transform, OdGePoint3d{10.0, 20.0, 30.0});
  const OdString name("station");
  const bool moduleStands = std::ifstream(MODULE_DIR "/TSL_Registration.so").good();
  std::cout << moved.x << ' ' << moved.y << ' ' << moved.z << ' ' << name.getLength() << ' ' << moduleStands << '\n';
  return ZOR::RegistrationObjectPointsRepository::desc() == nullptr ? 1 : 0;
}

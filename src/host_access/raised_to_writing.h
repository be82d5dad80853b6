// Objects of the drawing that are changed where they are open for reading.
#pragma once

#include "platform/sdk/od_db_object.h"

namespace ZOR::reg {

/// Raises an object from reading to writing as long as it stands. One whose change has failed must not
/// stay raised: others may hold it open, and the next attempt would find it being written.
class RaisedToWriting {
 public:
  explicit RaisedToWriting(OdDbObject& object) : raised(object) { raised.upgradeOpen(); }
  ~RaisedToWriting() {
    if (raised.isWriteEnabled()) raised.downgradeOpen();
  }
  RaisedToWriting(const RaisedToWriting&) = delete;
  RaisedToWriting& operator=(const RaisedToWriting&) = delete;

 private:
  OdDbObject& raised;
};

}  // namespace ZOR::reg

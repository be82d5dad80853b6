#include "platform/sdk/od_rx_module.h"

const OdRxClass* OdRxModule::desc() {
  static const OdRxClass descriptor(L"OdRxModule", OdRxObject::desc(), nullptr);
  return &descriptor;
}

const OdRxClass* OdRxModule::isA() const { return desc(); }

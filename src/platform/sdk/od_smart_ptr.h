// Smart pointer to the drawing SDK's counted objects.
#pragma once

#include <utility>

#include "platform/sdk/od_error.h"
#include "platform/sdk/od_rx_object.h"

/// Holds one reference to `T`. A conversion from a pointer to a base class tests the object's
/// class: `OdSmartPtr<T>::cast` gives null for an object of another class, the converting
/// constructor throws OdError_NotThatKindOfClass.
template <class T>
class OdSmartPtr {
 public:
  OdSmartPtr() = default;
  OdSmartPtr(std::nullptr_t) {}
  OdSmartPtr(T* object) : pointee(object) { addRef(); }
  OdSmartPtr(const OdSmartPtr& other) : pointee(other.pointee) { addRef(); }
  OdSmartPtr(OdSmartPtr&& other) noexcept : pointee(std::exchange(other.pointee, nullptr)) {}

  /// From a smart pointer to another class of the SDK. A null stays null.
  template <class U>
  OdSmartPtr(const OdSmartPtr<U>& other) : pointee(checkedCast(other.get())) {
    addRef();
  }

  ~OdSmartPtr() { release(); }

  OdSmartPtr& operator=(OdSmartPtr other) noexcept {
    std::swap(pointee, other.pointee);
    return *this;
  }

  /// The object as a `T`, or null when it is none.
  static OdSmartPtr cast(OdRxObject* object) {
    if (!object || !object->isKindOf(T::desc())) return {};
    return OdSmartPtr(static_cast<T*>(object));
  }
  template <class U>
  static OdSmartPtr cast(const OdSmartPtr<U>& other) {
    return cast(static_cast<OdRxObject*>(other.get()));
  }

  T* get() const { return pointee; }
  T* operator->() const { return pointee; }
  T& operator*() const { return *pointee; }
  bool isNull() const { return pointee == nullptr; }
  explicit operator bool() const { return pointee != nullptr; }

  friend bool operator==(const OdSmartPtr& a, const OdSmartPtr& b) { return a.pointee == b.pointee; }
  friend bool operator!=(const OdSmartPtr& a, const OdSmartPtr& b) { return a.pointee != b.pointee; }

 private:
  static T* checkedCast(OdRxObject* object) {
    if (!object) return nullptr;
    if (!object->isKindOf(T::desc())) throw OdError_NotThatKindOfClass(object->isA(), T::desc());
    return static_cast<T*>(object);
  }
  void addRef() {
    if (pointee) pointee->addRef();
  }
  void release() {
    if (pointee) std::exchange(pointee, nullptr)->release();
  }

  T* pointee = nullptr;
};

using OdRxObjectPtr = OdSmartPtr<OdRxObject>;

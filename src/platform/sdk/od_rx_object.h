// The root of the drawing SDK's classes: run-time class descriptors and counted objects.
#pragma once

#include <atomic>
#include <string>

#include "drawing_sdk_export.h"

class OdRxObject;
template <class T>
class OdSmartPtr;

/// Describes a class at run time: its name, its parent, and how to make an object of it.
class DRAWING_SDK_EXPORT OdRxClass {
 public:
  using Constructor = OdRxObject* (*)();

  /// `name` must outlive the descriptor; `constructor` is null for an abstract class.
  OdRxClass(const wchar_t* name, const OdRxClass* parent, Constructor constructor);
  OdRxClass(const OdRxClass&) = delete;
  OdRxClass& operator=(const OdRxClass&) = delete;

  const wchar_t* name() const { return className; }
  const OdRxClass* myParent() const { return parent; }
  bool isDerivedFrom(const OdRxClass* other) const;

  /// A new object that the result alone holds; null for an abstract class.
  OdSmartPtr<OdRxObject> create() const;

 private:
  const wchar_t* className;
  const OdRxClass* parent;
  Constructor constructor;
};

/// What a comparison of two objects gives.
enum class OdRxOrdering : int { less = -1, equal = 0, greater = 1, notOrdered = 2 };

/// Base of all objects that the SDK knows. Counting is left to the class: an object that is a
/// plain member of another one overrides addRef and release to do nothing.
class DRAWING_SDK_EXPORT OdRxObject {
 public:
  static const OdRxClass* desc();

  virtual ~OdRxObject();

  /// This object with one reference added when it is of class `type` or derived from it, else null.
  virtual OdRxObject* queryX(const OdRxClass* type) const;
  /// As queryX, without adding a reference.
  virtual OdRxObject* x(const OdRxClass* type) const;
  virtual const OdRxClass* isA() const;
  virtual void addRef() = 0;
  virtual void release() = 0;
  virtual long numRefs() const;
  /// A copy of the object; a class that can't be copied throws OdError(eNotApplicable).
  virtual OdSmartPtr<OdRxObject> clone() const;
  virtual void copyFrom(const OdRxObject* source);
  /// How this object stands to another one. Without an order of the class's own, an object is equal
  /// to itself, and not ordered beside any other.
  virtual OdRxOrdering comparedTo(const OdRxObject* other) const;
  /// Whether comparedTo finds them equal.
  virtual bool isEqualTo(const OdRxObject* other) const;

  bool isKindOf(const OdRxClass* type) const { return isA()->isDerivedFrom(type); }

 protected:
  OdRxObject() = default;
  OdRxObject(const OdRxObject&) = default;
  OdRxObject& operator=(const OdRxObject&) = default;
};

/// Adds an atomic reference count to `Base`: the count starts at 0, a smart pointer adds one, and
/// the object deletes itself when the count comes back to 0.
template <class Base>
class OdRxObjectImpl : public Base {
 public:
  using Base::Base;

  void addRef() override { references.fetch_add(1, std::memory_order_relaxed); }
  void release() override {
    if (references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }
  long numRefs() const override { return references.load(std::memory_order_acquire); }

 private:
  std::atomic<int> references{0};
};

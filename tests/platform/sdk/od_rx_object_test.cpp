#include "platform/sdk/od_rx_object.h"

#include <gtest/gtest.h>

#include "platform/sdk/od_rx_module.h"
#include "platform/sdk/od_test_objects.h"

namespace {

// Tells when it goes.
class Counted : public OdRxObjectImpl<OdRxObject> {
 public:
  explicit Counted(int& goneCounter) : gone(goneCounter) {}
  ~Counted() override { ++gone; }

 private:
  int& gone;
};

// A plain member of something else: not counted.
class Uncounted : public OdRxObject {
 public:
  void addRef() override {}
  void release() override {}
};

}  // namespace

TEST(OdRxClass, IsDerivedFromItselfAndItsAncestors) {
  EXPECT_TRUE(OdDbDictionary::desc()->isDerivedFrom(OdDbDictionary::desc()));
  EXPECT_TRUE(OdDbDictionary::desc()->isDerivedFrom(OdDbObject::desc()));
  EXPECT_TRUE(OdDbDictionary::desc()->isDerivedFrom(OdRxObject::desc()));
}

TEST(OdRxClass, IsNotDerivedFromItsChildrenItsSiblingsOrNothing) {
  EXPECT_FALSE(OdDbObject::desc()->isDerivedFrom(OdDbDictionary::desc()));
  EXPECT_FALSE(OdDbDictionary::desc()->isDerivedFrom(NumberObject::desc()));
  EXPECT_FALSE(OdDbDictionary::desc()->isDerivedFrom(nullptr));
}

TEST(OdRxClass, KnowsItsNameAndItsParent) {
  EXPECT_STREQ(OdDbDictionary::desc()->name(), L"OdDbDictionary");
  EXPECT_EQ(OdDbDictionary::desc()->myParent(), OdDbObject::desc());
  EXPECT_EQ(OdRxObject::desc()->myParent(), nullptr);
  EXPECT_EQ(OdRxModule::desc()->myParent(), OdRxObject::desc());
}

TEST(OdRxClass, MakesAnObjectThatTheResultAloneHolds) {
  const OdRxObjectPtr object = NumberObject::desc()->create();
  ASSERT_FALSE(object.isNull());
  EXPECT_EQ(object->isA(), NumberObject::desc());
  EXPECT_EQ(object->numRefs(), 1);
}

TEST(OdRxClass, MakesNoObjectOfAnAbstractClass) { EXPECT_TRUE(OdDbObject::desc()->create().isNull()); }

TEST(OdRxObject, QueryXAddsAReferenceAndXDoesNot) {
  const NumberObjectPtr object(new NumberObject);
  EXPECT_EQ(object->x(OdDbObject::desc()), object.get());
  EXPECT_EQ(object->numRefs(), 1);
  EXPECT_EQ(object->queryX(OdDbObject::desc()), object.get());
  EXPECT_EQ(object->numRefs(), 2);
  object->release();
}

TEST(OdRxObject, QueryXAndXGiveNullForAnotherClass) {
  const NumberObjectPtr object(new NumberObject);
  EXPECT_EQ(object->x(OdDbDictionary::desc()), nullptr);
  EXPECT_EQ(object->queryX(OdDbDictionary::desc()), nullptr);
  EXPECT_EQ(object->numRefs(), 1);
}

TEST(OdRxObject, AnUncountedObjectHasOneReference) { EXPECT_EQ(Uncounted().numRefs(), 1); }

TEST(OdRxObject, RefusesToBeCopiedUnlessAClassSaysOtherwise) {
  Uncounted object;
  EXPECT_EQ(codeOf([&] { object.clone(); }), eNotApplicable);
  EXPECT_EQ(codeOf([&] { object.copyFrom(&object); }), eNotApplicable);
}

TEST(OdSmartPtr, DeletesTheObjectWithTheLastReference) {
  int gone = 0;
  {
    const OdSmartPtr<Counted> first(new Counted(gone));
    {
      const OdSmartPtr<Counted> second = first;
      EXPECT_EQ(first->numRefs(), 2);
    }
    EXPECT_EQ(first->numRefs(), 1);
    EXPECT_EQ(gone, 0);
  }
  EXPECT_EQ(gone, 1);
}

TEST(OdSmartPtr, MovingHandsTheReferenceOn) {
  int gone = 0;
  OdSmartPtr<Counted> first(new Counted(gone));
  const OdSmartPtr<Counted> second = std::move(first);
  EXPECT_TRUE(first.isNull());
  EXPECT_EQ(second->numRefs(), 1);
}

TEST(OdSmartPtr, AssignmentToItselfKeepsTheObject) {
  int gone = 0;
  OdSmartPtr<Counted> pointer(new Counted(gone));
  const OdSmartPtr<Counted>& same = pointer;
  pointer = same;
  EXPECT_EQ(gone, 0);
  EXPECT_EQ(pointer->numRefs(), 1);
}

TEST(OdSmartPtr, CastGivesNullForAnotherClass) {
  const OdDbObjectPtr object(new NumberObject);
  EXPECT_TRUE(OdDbDictionaryPtr::cast(object).isNull());
  EXPECT_EQ(NumberObjectPtr::cast(object).get(), object.get());
}

TEST(OdSmartPtr, ConversionToAnotherClassThrowsAndNamesBoth) {
  const OdDbObjectPtr object(new NumberObject);
  try {
    const OdDbDictionaryPtr dictionary = object;
    FAIL() << "no error";
  } catch (const OdError_NotThatKindOfClass& error) {
    EXPECT_EQ(error.fromClass(), NumberObject::desc());
    EXPECT_EQ(error.toClass(), OdDbDictionary::desc());
  }
  EXPECT_EQ(object->numRefs(), 1);
}

TEST(OdSmartPtr, ConversionOfNullStaysNull) {
  const OdDbDictionaryPtr dictionary = OdDbObjectPtr();
  EXPECT_TRUE(dictionary.isNull());
}

TEST(OdRxObject, IsEqualToItselfAndNotOrderedBesideOthers) {
  const Uncounted one;
  const Uncounted other;
  EXPECT_EQ(one.comparedTo(&one), OdRxOrdering::equal);
  EXPECT_EQ(one.comparedTo(&other), OdRxOrdering::notOrdered);
  EXPECT_EQ(one.comparedTo(nullptr), OdRxOrdering::notOrdered);
  EXPECT_TRUE(one.isEqualTo(&one));
  EXPECT_FALSE(one.isEqualTo(&other));
  EXPECT_FALSE(one.isEqualTo(nullptr));
}

namespace {

// A class with an order of its own.
class Ranked : public Uncounted {
 public:
  explicit Ranked(int rankOfIt) : rank(rankOfIt) {}
  OdRxOrdering comparedTo(const OdRxObject* other) const override {
    const int difference = rank - static_cast<const Ranked*>(other)->rank;
    return difference < 0 ? OdRxOrdering::less : difference > 0 ? OdRxOrdering::greater : OdRxOrdering::equal;
  }

 private:
  int rank;
};

}  // namespace

TEST(OdRxObject, IsEqualWhereTheOrderOfItsClassSaysSo) {
  const Ranked one(1), alsoOne(1), two(2);
  EXPECT_TRUE(one.isEqualTo(&alsoOne));
  EXPECT_FALSE(one.isEqualTo(&two));
  EXPECT_EQ(two.comparedTo(&one), OdRxOrdering::greater);
}

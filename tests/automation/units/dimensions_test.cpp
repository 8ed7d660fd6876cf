// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The collection of dimensions: adding, finding, copying and renaming them.

#include <gtest/gtest.h>

#include "pvItems32.h"
#include "tests/automation/units/dimension_support.h"
#include "tests/support/counted.h"

namespace pv::test {
namespace {

Object three_dimensions() {
  const Object dimensions = make_dimensions();
  add_dimension(dimensions, L"Flow", {{L"m3/h", 3.6, 0}});
  add_dimension(dimensions, L"Mass", {{L"kg", 1, 0}, {L"g", 1000, 0.5}});
  add_dimension(dimensions, L"Time", {{L"s", 1, 0}});
  return dimensions;
}

TEST(Dimension, BeginsWithAnEmptySetOfUnits) {
  const Object dimension = make_dimension();
  EXPECT_EQ(dimension.get(L"Key"), L"");
  EXPECT_EQ(dimension.get(L"Caption"), L"");
  EXPECT_EQ(dimension.get_object(L"Units").get(L"Count"), 0);
}

TEST(Dimension, KeepsWhatIsSet) {
  const Object dimension = make_dimension();
  const Object units = Object::create(L"pvItems32.CUnits");
  dimension.put(L"Key", L"ключ");
  dimension.put(L"Caption", std::wstring(L"a\0b", 3));
  dimension.set(L"Units", units);
  EXPECT_EQ(dimension.get(L"Key"), L"ключ");
  EXPECT_EQ(dimension.get(L"Caption"), std::wstring(L"a\0b", 3));
  EXPECT_EQ(dimension.get(L"Units"), units);
  dimension.set(L"Units", Value::nothing());
  EXPECT_TRUE(dimension.get(L"Units").is_nothing());
}

TEST(Dimension, RefusesUnitsOfAnotherKind) {
  const Object dimension = make_dimension();
  EXPECT_EQ(dimension.try_set(L"Units", make_dimension()).result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(dimension.try_set(L"Units", L"text").result, DISP_E_TYPEMISMATCH);
}

TEST(Dimension, CopyReplacesTheUnitsOfTheDestination) {
  const Object source = three_dimensions().get_object(L"Item", 2);
  const Object dest = make_dimension();
  dest.put(L"Key", L"kept");
  dest.get_object(L"Units").call(L"Add", L"old", L"old", 1.0, 0.0);
  EXPECT_EQ(source.call(L"Copy", dest), dest);
  EXPECT_EQ(dest.get(L"Caption"), L"Mass");
  EXPECT_EQ(dest.get(L"Key"), L"kept");
  EXPECT_EQ(dest.get_object(L"Units").call(L"List"), L"kg|g|");
  const Object gram = dest.get_object(L"Units").get_object(L"Item", L"g");
  EXPECT_EQ(gram.get(L"Slope"), 1000.0);
  EXPECT_EQ(gram.get(L"Offset"), 0.5);
}

TEST(Dimension, CopyMakesNewUnitsUnderTheirCaptions) {
  const Object source = three_dimensions().get_object(L"Item", 2);
  const Object original = source.get_object(L"Units").get_object(L"Item", 2);
  original.put(L"Key", L"other");
  original.put(L"Caption", L"gram");
  const Object dest = source.call_object(L"Copy", make_dimension());
  const Object copy = dest.get_object(L"Units").get_object(L"Item", L"gram");
  EXPECT_EQ(copy.get(L"Key"), L"gram");
  EXPECT_FALSE(copy == original);
}

void expect_caption_only_copied(const Object& source) {
  source.put(L"Caption", L"bare");
  const Object dest = make_dimension();
  dest.get_object(L"Units").call(L"Add", L"kg", L"kg", 1.0, 0.0);
  EXPECT_EQ(source.call(L"Copy", dest), dest);
  EXPECT_EQ(dest.get(L"Caption"), L"bare");
  EXPECT_EQ(dest.get_object(L"Units").call(L"List"), L"kg|");
}

TEST(Dimension, CopyWithoutUnitsTakesTheCaptionOnly) {
  expect_caption_only_copied(make_dimension());
  const Object source = make_dimension();
  source.set(L"Units", Value::nothing());
  expect_caption_only_copied(source);
}

/// Units of a host, which keeps them in units of ours.
class HostUnits final : public Counted<_CUnits> {
 public:
  explicit HostUnits(const Object& units) : units_(units.as<_CUnits>()) {}

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return units_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return units_->GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override {
    return units_->GetIDsOfNames(iid, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO* exception, UINT* argument) override {
    return units_->Invoke(id, iid, locale, flags, parameters, result, exception, argument);
  }

  STDMETHODIMP get_Item(VARIANT index, _CUnit** result) override {
    return units_->get_Item(index, result);
  }
  STDMETHODIMP get_Count(LONG* result) override { return units_->get_Count(result); }
  STDMETHODIMP Remove(VARIANT index) override { return units_->Remove(index); }
  STDMETHODIMP Clear() override { return units_->Clear(); }
  STDMETHODIMP get_NewEnum(IUnknown** result) override { return units_->get_NewEnum(result); }
  STDMETHODIMP Add(BSTR key, BSTR caption, double slope, double offset, _CUnit** result) override {
    return units_->Add(key, caption, slope, offset, result);
  }
  STDMETHODIMP List(BSTR separator, BSTR* result) override {
    return units_->List(separator, result);
  }

 private:
  Ref<_CUnits> units_;
};

TEST(Dimension, CopyAsksTheUnitsOfAHostToTakeCopies) {
  const Object mass = three_dimensions().get_object(L"Item", 2);
  const Object units = Object::create(L"pvItems32.CUnits");
  units.call(L"Add", L"old", L"old", 1.0, 0.0);
  const Ref<IDispatch> of_host(new HostUnits(units));
  const Object dest = make_dimension();
  dest.set(L"Units", Value(of_host.get()));
  EXPECT_EQ(mass.call(L"Copy", dest), dest);
  EXPECT_EQ(units.call(L"List"), L"kg|g|");
  EXPECT_EQ(units.get_object(L"Item", L"g").get(L"Offset"), 0.5);
  const Object back = make_dimension();
  EXPECT_EQ(dest.call(L"Copy", back), back);
  EXPECT_EQ(back.get_object(L"Units").call(L"List"), L"kg|g|");
}

TEST(Dimension, CopyToOneWhoseUnitsAreNothingLeavesItsCaption) {
  const Object mass = three_dimensions().get_object(L"Item", 2);
  const Object dest = make_dimension();
  dest.put(L"Caption", L"kept");
  dest.set(L"Units", Value::nothing());
  EXPECT_EQ(mass.call(L"Copy", dest), dest);
  EXPECT_EQ(dest.get(L"Caption"), L"kept");
}

TEST(Dimension, CopyOntoItselfChangesNothing) {
  const Object mass = three_dimensions().get_object(L"Item", 2);
  EXPECT_EQ(mass.call(L"Copy", mass), mass);
  EXPECT_EQ(mass.get_object(L"Units").call(L"List"), L"kg|g|");
}

TEST(Dimension, CopyToNothingIsNothing) {
  EXPECT_TRUE(make_dimension().call(L"Copy", Value::nothing()).is_nothing());
}

TEST(Dimensions, BeginEmptyAndUnchanged) {
  const Object dimensions = make_dimensions();
  EXPECT_EQ(dimensions.get(L"Count"), 0);
  EXPECT_EQ(dimensions.get(L"Changed"), false);
  EXPECT_EQ(dimensions.call(L"List"), L"");
}

TEST(Dimensions, AddAppendsTheDimensionWithItsUnits) {
  const Object dimensions = make_dimensions();
  const Object units = Object::create(L"pvItems32.CUnits");
  const Object added = dimensions.call_object(L"Add", L"flow", L"Volume flow", units);
  EXPECT_EQ(added.get(L"Key"), L"flow");
  EXPECT_EQ(added.get(L"Caption"), L"Volume flow");
  EXPECT_EQ(added.get(L"Units"), units);
  EXPECT_EQ(dimensions.get(L"Item", L"Flow"), added);
  EXPECT_EQ(dimensions.get(L"Item", 1), added);
}

TEST(Dimensions, AddWithoutUnitsGivesAnEmptySet) {
  const Object added = make_dimensions().call_object(L"Add", L"a", L"a", Value::nothing());
  EXPECT_EQ(added.get_object(L"Units").get(L"Count"), 0);
}

TEST(Dimensions, AddWithoutKeyCanBeRepeated) {
  const Object dimensions = make_dimensions();
  dimensions.call(L"Add", L"", L"a", Value::nothing());
  dimensions.call(L"Add", L"", L"a", Value::nothing());
  EXPECT_EQ(dimensions.call(L"List"), L"a|a|");
}

TEST(Dimensions, AddUnderAUsedKeyIsNothing) {
  const Object dimensions = three_dimensions();
  EXPECT_TRUE(dimensions.call(L"Add", L"MASS", L"x", Value::nothing()).is_nothing());
  EXPECT_EQ(dimensions.get(L"Count"), 3);
}

TEST(Dimensions, ItemThatDoesNotExistIsNothing) {
  const Object dimensions = three_dimensions();
  for (const Value& index : {Value(0), Value(4), Value(L"2"), Value(L"Volume"), Value::null()}) {
    EXPECT_TRUE(dimensions.get(L"Item", index).is_nothing()) << testing::PrintToString(index);
  }
}

TEST(Dimensions, ListEndsEveryCaptionWithABar) {
  EXPECT_EQ(three_dimensions().call(L"List"), L"Flow|Mass|Time|");
}

TEST(Dimensions, RemoveClosesTheGapAndPassesOverWhatDoesNotExist) {
  const Object dimensions = three_dimensions();
  dimensions.call(L"Remove", 2);
  dimensions.call(L"Remove", 3);
  dimensions.call(L"Remove", L"Mass");
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|Time|");
  dimensions.call(L"Clear");
  EXPECT_EQ(dimensions.get(L"Count"), 0);
}

TEST(Dimensions, KeepsItsDimensionsOnlyAsLongAsItLives) {
  Object mass;
  {
    const Object dimensions = three_dimensions();
    mass = dimensions.get_object(L"Item", 2);
  }
  EXPECT_EQ(references_of(mass.get()), 1u);
  EXPECT_EQ(mass.get(L"Caption"), L"Mass");
}

TEST(Dimensions, EnumeratorVisitsThemInOrder) {
  const Object dimensions = three_dimensions();
  const Outcome outcome = dimensions.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET);
  ASSERT_TRUE(outcome.worked());
  const auto enumerator = query<IEnumVARIANT>(outcome.value.punkVal);
  ASSERT_TRUE(enumerator);
  std::wstring captions;
  for (Value item; enumerator->Next(1, &item, nullptr) == S_OK; item = Value()) {
    captions += Object(item).get(L"Caption").text() + L" ";
  }
  EXPECT_EQ(captions, L"Flow Mass Time ");
}

TEST(Dimensions, ChangedIsTheHostsToSet) {
  const Object dimensions = three_dimensions();
  dimensions.put(L"Changed", true);
  EXPECT_EQ(dimensions.get(L"Changed"), true);
  dimensions.put(L"Changed", 5);  // any number but 0 is True
  EXPECT_EQ(dimensions.get(L"Changed"), true);
  dimensions.put(L"Changed", false);
  EXPECT_EQ(dimensions.get(L"Changed"), false);
}

TEST(ChangeTitleOfDimensions, KeepsThePositionAndTheUnits) {
  const Object dimensions = three_dimensions();
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 2, L"Weight"), true);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|Weight|Time|");
  const Object weight = dimensions.get_object(L"Item", 2);
  EXPECT_EQ(weight.get(L"Key"), L"Weight");
  EXPECT_EQ(weight.get_object(L"Units").call(L"List"), L"kg|g|");
  EXPECT_EQ(dimensions.get(L"Item", L"weight"), weight);
  EXPECT_TRUE(dimensions.get(L"Item", L"Mass").is_nothing());
}

TEST(ChangeTitleOfDimensions, RenamesTheFirstAndTheLast) {
  const Object dimensions = three_dimensions();
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 1, L"First"), true);
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 3, L"Last"), true);
  EXPECT_EQ(dimensions.call(L"List"), L"First|Mass|Last|");
  EXPECT_EQ(dimensions.get(L"Item", L"Last"), dimensions.get(L"Item", 3));
}

TEST(ChangeTitleOfDimensions, MayKeepTheNameOrChangeItsCase) {
  const Object dimensions = three_dimensions();
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 2, L"Mass"), true);
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 2, L"MASS"), true);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|MASS|Time|");
}

TEST(ChangeTitleOfDimensions, ToATakenNameFailsAndLosesTheOldEntry) {
  const Object dimensions = three_dimensions();
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 2, L"time"), false);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|Time|");
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 2, L"Flow"), false);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|");
}

TEST(ChangeTitleOfDimensions, OfABadPositionFailsAndChangesNothing) {
  const Object dimensions = three_dimensions();
  for (const int position : {0, -1, 4}) {
    EXPECT_EQ(dimensions.call(L"ChangeTitle", position, L"New"), false) << position;
  }
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|Mass|Time|");
}

TEST(ChangeTitleOfDimensions, ToAnEmptyNameLeavesNoKey) {
  const Object dimensions = three_dimensions();
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 2, L""), true);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow||Time|");
  EXPECT_TRUE(dimensions.get(L"Item", L"").is_nothing());
}

}  // namespace
}  // namespace pv::test

#ifndef TESTS_SUPPORT_PRIVATE_ACCESS_H_
#define TESTS_SUPPORT_PRIVATE_ACCESS_H_

/// Gives a test the pointer to a private member: access is not checked in an explicit
/// instantiation.
///
/// A test declares a tag with the member's type and the function that hands the member out, and
/// instantiates this template for it, both in the global namespace. A tag's name tells class and
/// member, so that no two test files mean different things by one name:
///
///     struct PrivateVemRegionData {
///       using Type = VemRegionData* VemRegion::*;
///       friend Type PrivateOf(PrivateVemRegionData);
///     };
///     template struct PrivateAccess<PrivateVemRegionData, &VemRegion::data_>;
///
/// `region.*PrivateOf(PrivateVemRegionData())` is then the member of `region`. The instantiation
/// defines a function, so it stands in one test file only.
template <typename Tag, typename Tag::Type kMember>
struct PrivateAccess {
  friend typename Tag::Type PrivateOf(Tag) { return kMember; }
};

#endif  // TESTS_SUPPORT_PRIVATE_ACCESS_H_

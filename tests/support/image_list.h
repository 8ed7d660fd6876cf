// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "com/ref.h"
#include "tests/support/value.h"

namespace pv::test {

class ImageListDispatch;

/// An image-list control of the host: pictures under keys in a collection "ListImages", and type
/// information of its own.
class ImageListControl {
 public:
  /// Where the control tells its type.
  struct Type {
    std::wstring class_name;      ///< of its coclass; empty when it provides no class information
    std::wstring interface_name;  ///< of its dispatch interface; empty when it gives none
  };
  struct Image {
    Value index;
    std::wstring key;
    Value picture;
  };
  /// Whether the collection finds members by key; all find them by position.
  enum class Lookup { kByKey, kByPosition };

  explicit ImageListControl(const Type& type = {L"ImageList", L"IImageList"},
                            Lookup lookup = Lookup::kByKey);
  ImageListControl(const ImageListControl&) = delete;
  ImageListControl& operator=(const ImageListControl&) = delete;
  ~ImageListControl();

  /// What "Add" has stored, in order. Keys are unique without regard to case, as in the real one.
  const std::vector<Image>& images() const;
  std::vector<std::wstring> keys() const;

  IDispatch* get() const;
  operator Value() const { return Value(get()); }

 private:
  Ref<ImageListDispatch> control_;
};

}  // namespace pv::test

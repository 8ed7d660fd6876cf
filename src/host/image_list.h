// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "host/late_bound.h"

namespace pv {

/// A host's image list: any object whose collection ListImages answers to Add (index, key, picture)
/// by name and finds an image by its key.
class ImageList {
 public:
  explicit ImageList(IDispatch* control) : control_(Ref<IDispatch>(control)) {}

  /// Whether an image stands under the key, compared without regard to case.
  bool has(const std::wstring& key) const;
  /// Adds a picture at the end. Errors of the control pass to the caller, so does its refusal of a
  /// key that is taken.
  void add(const std::wstring& key, IDispatch* picture) const;

 private:
  LateBound images() const { return control_.get_object(L"ListImages"); }

  LateBound control_;
};

}  // namespace pv

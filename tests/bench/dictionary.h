// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/boundary.h"
#include "com/ref.h"
#include "com/variant.h"

namespace pv::bench {

inline constexpr IID kDictionary{
    0x42C642C1, 0x97E1, 0x11CF, {0x97, 0x8F, 0x00, 0xA0, 0x24, 0x63, 0xE0, 0x6F}};

/// The first members of the platform's dictionary, as its type library has them.
struct IScriptDictionary : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE putref_Item(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Item(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Item(VARIANT* key, VARIANT* item) = 0;
  virtual HRESULT STDMETHODCALLTYPE Add(VARIANT* key, VARIANT* item) = 0;
};

/// The keyed collection of script hosts, the neighbour that ours is measured against.
class Dictionary {
 public:
  Dictionary() {
    CLSID clsid{};
    check(CLSIDFromProgID(L"Scripting.Dictionary", &clsid));
    check(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, kDictionary,
                           reinterpret_cast<void**>(dictionary_.put())));
  }

  IDispatch* dispatch() const { return dictionary_.get(); }
  void add(Variant key, Variant item) const { check(dictionary_->Add(&key, &item)); }
  Variant item(VARIANT& key) const {
    Variant found;
    check(dictionary_->get_Item(&key, &found));
    return found;
  }

 private:
  Ref<IScriptDictionary> dictionary_;
};

}  // namespace pv::bench

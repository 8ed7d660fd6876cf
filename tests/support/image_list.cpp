// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/image_list.h"

#include <ocidl.h>

#include <algorithm>

#include "com/boundary.h"
#include "platform/letter_case.h"
#include "tests/support/dispatch_object.h"

namespace pv::test {
namespace {

constexpr HRESULT kKeyNotUnique = static_cast<HRESULT>(0x800A0000u + 35602);

// Type information as a control carries it in its own library.
Ref<ITypeInfo> make_type(TYPEKIND kind, const std::wstring& name) {
  if (name.empty()) return {};
  Ref<ICreateTypeLib2> library;
  check(CreateTypeLib2(SYS_WIN32, L"controls.tlb", library.put()));
  Ref<ICreateTypeInfo> type;
  check(library->CreateTypeInfo(std::wstring(name).data(), kind, type.put()));
  return query<ITypeInfo>(type.get());
}

HRESULT give(const Ref<ITypeInfo>& type, ITypeInfo** result) {
  *result = Ref<ITypeInfo>(type).detach();
  return type ? S_OK : E_NOTIMPL;
}

constexpr HRESULT kNotFound = static_cast<HRESULT>(0x800A0000u + 35601);

DISPID position_of(std::wstring_view member, std::initializer_list<const wchar_t*> members) {
  DISPID id = 0;
  for (const wchar_t* each : members) {
    ++id;
    if (key_case().fold(member) == key_case().fold(each)) return id;
  }
  return DISPID_UNKNOWN;
}

/// A member of the collection.
class ListImage final : public DispatchObject {
 public:
  explicit ListImage(const ImageListControl::Image& image) : image_(image) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    *result = Value(id == 1 ? Value(image_.key) : image_.picture).detach();
    return S_OK;
  }

 private:
  DISPID id_of(std::wstring_view member) override {
    return position_of(member, {L"Key", L"Picture"});
  }

  const ImageListControl::Image image_;
};

/// The collection: Add(Index, Key, Picture), Item(position or key) and Count.
class ListImages final : public DispatchObject {
 public:
  explicit ListImages(ImageListControl::Lookup lookup) : lookup_(lookup) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override {
    switch (id) {
      case 1:
        return add(*given, exception);
      case 2:
        return give(given->rgvarg[0], *result, exception);
      default:
        *result = Value(static_cast<long>(images.size())).detach();
        return S_OK;
    }
  }

  std::vector<ImageListControl::Image> images;

 private:
  DISPID id_of(std::wstring_view member) override {
    return position_of(member, {L"Add", L"Item", L"Count"});
  }

  HRESULT add(const DISPPARAMS& given, EXCEPINFO* exception) {
    if (given.cArgs != 3) return DISP_E_BADPARAMCOUNT;
    const VARIANT* const arguments = given.rgvarg;  // the last one first
    if (arguments[1].vt != VT_BSTR || arguments[0].vt != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
    const std::wstring key(view_of(arguments[1].bstrVal));
    if (find(key)) return raise({kKeyNotUnique, L"ImageList", L"Key is not unique"}, exception);
    images.push_back({Value(arguments[2]), key, Value(arguments[0])});
    return S_OK;
  }

  HRESULT give(const VARIANT& index, VARIANT& result, EXCEPINFO* exception) {
    const ImageListControl::Image* image = nullptr;
    if (index.vt == VT_BSTR) {
      image = lookup_ == ImageListControl::Lookup::kByKey
                  ? find(std::wstring(view_of(index.bstrVal)))
                  : nullptr;
    } else if (const long position = Value(index).number();
               position >= 1 && position <= static_cast<long>(images.size())) {
      image = &images[static_cast<std::size_t>(position - 1)];
    }
    if (!image) return raise({kNotFound, L"ImageList", L"Element not found"}, exception);
    result = Value(new ListImage(*image)).detach();
    return S_OK;
  }

  const ImageListControl::Image* find(const std::wstring& key) const {
    const auto found = std::find_if(images.begin(), images.end(), [&](const auto& image) {
      return key_case().fold(image.key) == key_case().fold(key);
    });
    return found == images.end() ? nullptr : &*found;
  }

  const ImageListControl::Lookup lookup_;
};

}  // namespace

class ImageListDispatch final : public DispatchObject, public IProvideClassInfo {
 public:
  ImageListDispatch(const ImageListControl::Type& type, ImageListControl::Lookup lookup)
      : class_(make_type(TKIND_COCLASS, type.class_name)),
        interface_(make_type(TKIND_DISPATCH, type.interface_name)),
        images_(new ListImages(lookup)) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_IProvideClassInfo) return DispatchObject::QueryInterface(iid, object);
    *object = static_cast<IProvideClassInfo*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return DispatchObject::AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return DispatchObject::Release(); }
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return give(class_, info); }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override { return give(interface_, info); }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    if (result) *result = Value(images_.get()).detach();
    return S_OK;
  }

  const ListImages& images() const { return *images_; }

 private:
  DISPID id_of(std::wstring_view member) override {
    return key_case().fold(member) == key_case().fold(L"ListImages") ? 1 : DISPID_UNKNOWN;
  }

  const Ref<ITypeInfo> class_, interface_;
  const Ref<ListImages> images_;
};

ImageListControl::ImageListControl(const Type& type, Lookup lookup)
    : control_(new ImageListDispatch(type, lookup)) {}
ImageListControl::~ImageListControl() = default;
const std::vector<ImageListControl::Image>& ImageListControl::images() const {
  return control_->images().images;
}
std::vector<std::wstring> ImageListControl::keys() const {
  std::vector<std::wstring> keys;
  for (const Image& image : images()) keys.push_back(image.key);
  return keys;
}
IDispatch* ImageListControl::get() const { return control_.get(); }

}  // namespace pv::test

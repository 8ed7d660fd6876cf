#include "tests/support/image_list.h"

#include <ocidl.h>

#include <algorithm>

#include "com/boundary.h"
#include "com/key_fold.h"
#include "tests/support/dispatch_object.h"

namespace pv::test {
namespace {

constexpr HRESULT kKeyNotUnique = static_cast<HRESULT>(0x800A0000u + 35602);

// Type information as a control carries it in its own library.
Ref<ITypeInfo> make_type(TYPEKIND kind, const std::wstring& name) {
  if (name.empty()) return {};
  Ref<ICreateTypeLib2> library;
  check(CreateTypeLib2(SYS_WIN32, L"controls.tlb", library.receive()));
  Ref<ICreateTypeInfo> type;
  check(library->CreateTypeInfo(std::wstring(name).data(), kind, type.receive()));
  return query<ITypeInfo>(type.get());
}

HRESULT give(const Ref<ITypeInfo>& type, ITypeInfo** result) {
  *result = Ref<ITypeInfo>(type).detach();
  return type ? S_OK : E_NOTIMPL;
}

/// The collection: Add(Index, Key, Picture).
class ListImages final : public DispatchObject {
 public:
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT*, EXCEPINFO* exception,
                      UINT*) override {
    if (given->cArgs != 3) return DISP_E_BADPARAMCOUNT;
    const VARIANT* const arguments = given->rgvarg;  // the last one first
    if (arguments[1].vt != VT_BSTR || arguments[0].vt != VT_DISPATCH) return DISP_E_TYPEMISMATCH;
    const std::wstring key(view_of(arguments[1].bstrVal));
    const bool taken = std::any_of(images.begin(), images.end(), [&](const auto& image) {
      return fold_key(image.key) == fold_key(key);
    });
    if (taken) return raise({kKeyNotUnique, L"ImageList", L"Key is not unique"}, exception);
    images.push_back({Value(arguments[2]), key, Value(arguments[0])});
    return S_OK;
  }

  std::vector<ImageListControl::Image> images;

 private:
  DISPID id_of(std::wstring_view member) override {
    return fold_key(member) == fold_key(L"Add") ? 1 : DISPID_UNKNOWN;
  }
};

}  // namespace

class ImageListDispatch final : public DispatchObject, public IProvideClassInfo {
 public:
  explicit ImageListDispatch(const ImageListControl::Type& type)
      : class_(make_type(TKIND_COCLASS, type.class_name)),
        interface_(make_type(TKIND_DISPATCH, type.interface_name)),
        images_(new ListImages) {}

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
    return fold_key(member) == fold_key(L"ListImages") ? 1 : DISPID_UNKNOWN;
  }

  const Ref<ITypeInfo> class_, interface_;
  const Ref<ListImages> images_;
};

ImageListControl::ImageListControl(Type type) : control_(new ImageListDispatch(type)) {}
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

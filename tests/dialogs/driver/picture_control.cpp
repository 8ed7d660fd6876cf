// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/picture_control.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include <memory>

#include "com/boundary.h"
#include "com/variant.h"
#include "platform/letter_case.h"

namespace pv::dialogs_test {
namespace {

using Kind = RegisteredPictureControl::Kind;

constexpr CLSID kClass = {
    0x5B0C7A52, 0x3A0E, 0x4D0B, {0x9C, 0x5F, 0x2E, 0x61, 0x70, 0x9A, 0x44, 0x1D}};
constexpr wchar_t kClassText[] = L"{5B0C7A52-3A0E-4D0B-9C5F-2E61709A441D}";
constexpr wchar_t kProgIdKey[] = L"pvPicEdit32.pvPicEdit";
constexpr wchar_t kClassKey[] = L"pvPicEdit32.pvPicEdit\\CLSID";
constexpr const wchar_t* kMembers[] = {L"NewSymbol", L"Symbol", L"Setting1", L"Setting2",
                                       L"SymbolPicture"};
constexpr HRESULT kFailure = static_cast<HRESULT>(0x800A0000u + 1234);

Ref<IPictureDisp> picture_of_size(long size) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap =
      CreateBitmap(static_cast<int>(size), static_cast<int>(size), 1, 1, nullptr);
  Ref<IPictureDisp> picture;
  OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                           reinterpret_cast<void**>(picture.put()));
  return picture;
}

/// A control with a text box of its own as its window.
class PictureControl final : public IOleObject,
                             public IOleInPlaceObject,
                             public IOleInPlaceActiveObject,
                             public IPersistStreamInit,
                             public IDispatch {
 public:
  PictureControl(std::shared_ptr<PictureControlLog> log, Kind kind)
      : log_(std::move(log)), kind_(kind) {
    ++log_->living;
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IOleObject) *object = static_cast<IOleObject*>(this);
    if (iid == IID_IOleInPlaceObject) *object = static_cast<IOleInPlaceObject*>(this);
    if (iid == IID_IOleInPlaceActiveObject) *object = static_cast<IOleInPlaceActiveObject*>(this);
    if (iid == IID_IPersistStreamInit) *object = static_cast<IPersistStreamInit*>(this);
    if (iid == IID_IDispatch) *object = static_cast<IDispatch*>(this);
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
  STDMETHODIMP_(ULONG) Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  // IOleObject
  STDMETHODIMP SetClientSite(IOleClientSite* site) override {
    site_ = site;
    return S_OK;
  }
  STDMETHODIMP GetClientSite(IOleClientSite** site) override {
    *site = Ref<IOleClientSite>(site_).detach();
    return S_OK;
  }
  STDMETHODIMP SetHostNames(LPCOLESTR, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP Close(DWORD) override { return InPlaceDeactivate(); }
  STDMETHODIMP SetMoniker(DWORD, IMoniker*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP InitFromData(IDataObject*, BOOL, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP GetClipboardData(DWORD, IDataObject**) override { return E_NOTIMPL; }
  STDMETHODIMP DoVerb(LONG, LPMSG, IOleClientSite*, LONG, HWND, LPCRECT) override {
    return activate();
  }
  STDMETHODIMP EnumVerbs(IEnumOLEVERB**) override { return E_NOTIMPL; }
  STDMETHODIMP Update() override { return S_OK; }
  STDMETHODIMP IsUpToDate() override { return S_OK; }
  STDMETHODIMP GetUserClassID(CLSID* id) override {
    *id = kClass;
    return S_OK;
  }
  STDMETHODIMP GetUserType(DWORD, LPOLESTR*) override { return E_NOTIMPL; }
  STDMETHODIMP SetExtent(DWORD, SIZEL*) override { return S_OK; }
  STDMETHODIMP GetExtent(DWORD, SIZEL* size) override {
    *size = {8000, 6000};  // hundredths of millimetres
    return S_OK;
  }
  STDMETHODIMP Advise(IAdviseSink*, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP Unadvise(DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP EnumAdvise(IEnumSTATDATA**) override { return E_NOTIMPL; }
  STDMETHODIMP GetMiscStatus(DWORD, DWORD* status) override {
    *status = OLEMISC_SETCLIENTSITEFIRST;
    return S_OK;
  }
  STDMETHODIMP SetColorScheme(LOGPALETTE*) override { return E_NOTIMPL; }

  // IOleWindow, IOleInPlaceObject
  STDMETHODIMP GetWindow(HWND* window) override {
    *window = log_->window;
    return log_->window ? S_OK : E_FAIL;
  }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return S_OK; }
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override { return S_OK; }
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT) override {
    MoveWindow(log_->window, place->left, place->top, place->right, place->bottom, TRUE);
    return S_OK;
  }
  STDMETHODIMP ReactivateAndUndo() override { return E_NOTIMPL; }

  // IOleInPlaceActiveObject
  STDMETHODIMP TranslateAccelerator(LPMSG message) override {
    if (message->message == WM_KEYDOWN) log_->accelerators.push_back(message->wParam);
    if (message->message != WM_KEYDOWN || message->wParam != VK_RETURN) return S_FALSE;
    if (GetKeyState(VK_SHIFT) >= 0) return S_FALSE;
    return S_OK;  // Shift and Enter are its own
  }
  STDMETHODIMP OnFrameWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnDocWindowActivate(BOOL) override { return S_OK; }
  STDMETHODIMP ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

  // IPersistStreamInit
  STDMETHODIMP GetClassID(CLSID* id) override { return GetUserClassID(id); }
  STDMETHODIMP IsDirty() override { return S_FALSE; }
  STDMETHODIMP Load(LPSTREAM) override { return E_NOTIMPL; }
  STDMETHODIMP Save(LPSTREAM, BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
  STDMETHODIMP InitNew() override {
    log_->calls.push_back(site_ ? L"InitNew" : L"InitNew without site");
    return S_OK;
  }

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    const DISPID count = kind_ == Kind::kWithoutPictures ? 4 : 5;
    for (DISPID id = 0; id < count; ++id) {
      if (key_case().fold(names[0]) != key_case().fold(kMembers[id])) continue;
      ids[0] = id + 1;
      return S_OK;
    }
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  ~PictureControl() { --log_->living; }

  HRESULT activate();
  Variant get(DISPID id) const;
  void put(DISPID id, const VARIANT& value);
  Variant make_picture(const DISPPARAMS& given) const;
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l);

  std::shared_ptr<PictureControlLog> log_;
  Kind kind_;
  Ref<IOleClientSite> site_;
  WNDPROC edit_procedure_ = nullptr;
  long references_ = 0;
};

HRESULT PictureControl::activate() {
  if (log_->window) return S_OK;
  const auto in_place = query<IOleInPlaceSite>(site_.get());
  if (!in_place || in_place->CanInPlaceActivate() != S_OK) return E_FAIL;
  HWND parent = nullptr;
  Ref<IOleInPlaceFrame> frame;
  Ref<IOleInPlaceUIWindow> document;
  RECT place{};
  RECT clip{};
  OLEINPLACEFRAMEINFO info{};
  info.cb = sizeof info;
  check(in_place->OnInPlaceActivate());
  check(in_place->GetWindow(&parent));
  check(in_place->GetWindowContext(frame.put(), document.put(), &place, &clip, &info));
  log_->window = CreateWindowW(L"EDIT", L"", WS_CHILD | WS_VISIBLE, place.left, place.top,
                               place.right, place.bottom, parent, nullptr, nullptr, nullptr);
  frame->SetActiveObject(this, nullptr);
  in_place->OnUIActivate();
  ++log_->activations;
  SetPropW(log_->window, L"control", this);
  edit_procedure_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(log_->window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
  return S_OK;
}

STDMETHODIMP PictureControl::InPlaceDeactivate() {
  if (!log_->window) return S_OK;
  RemovePropW(log_->window, L"control");
  DestroyWindow(std::exchange(log_->window, nullptr));
  if (const auto in_place = query<IOleInPlaceSite>(site_.get())) in_place->OnInPlaceDeactivate();
  return S_OK;
}

LRESULT CALLBACK PictureControl::procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  const auto self = static_cast<PictureControl*>(GetPropW(window, L"control"));
  if (!self) return DefWindowProcW(window, message, w, l);
  if (message == WM_CHAR) self->log_->typed += static_cast<wchar_t>(w);
  return CallWindowProcW(self->edit_procedure_, window, message, w, l);
}

Variant PictureControl::get(DISPID id) const {
  if (id == 2) return Variant(log_->symbol);
  return Variant(id == 3 ? log_->setting1 : log_->setting2);
}

void PictureControl::put(DISPID id, const VARIANT& value) {
  if (id == 2) log_->symbol = to_text(value);
  if (id == 3) log_->setting1 = to_long(value);
  if (id == 4) log_->setting2 = to_long(value);
  log_->calls.push_back(std::wstring(kMembers[id - 1]) + L"=" + to_text(value));
}

Variant PictureControl::make_picture(const DISPPARAMS& given) const {
  if (given.cArgs != 2) throw automation_error(ErrorCode::kInvalidCall);
  log_->calls.push_back(L"SymbolPicture " + to_text(given.rgvarg[1]) + L" " +
                        to_text(given.rgvarg[0]));
  return Variant(picture_of_size(to_long(given.rgvarg[0])).get());
}

STDMETHODIMP PictureControl::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                                    VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (kind_ == Kind::kFails && id == 5) {
    exception->scode = kFailure;
    return DISP_E_EXCEPTION;
  }
  if (id == 1) {
    log_->symbol = L"new";
    log_->calls.push_back(L"NewSymbol");
  } else if (id == 5) {
    *result = make_picture(*given).detach();
  } else if (flags & DISPATCH_PROPERTYPUT) {
    put(id, given->rgvarg[0]);
  } else {
    *result = get(id).detach();
  }
  return S_OK;
}

class PictureControlFactory final : public IClassFactory {
 public:
  explicit PictureControlFactory(Kind kind) : kind_(kind) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
  STDMETHODIMP_(ULONG) Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
    *object = nullptr;
    if (kind_ == Kind::kCannotBeCreated) return E_FAIL;
    const Ref<IOleObject> control(new PictureControl(log, kind_));
    return control->QueryInterface(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

  const std::shared_ptr<PictureControlLog> log = std::make_shared<PictureControlLog>();

 private:
  ~PictureControlFactory() = default;

  Kind kind_;
  long references_ = 0;
};

}  // namespace

RegisteredPictureControl::RegisteredPictureControl(Kind kind)
    : factory_(new PictureControlFactory(kind)) {
  EXPECT_EQ(
      RegSetKeyValueW(HKEY_CLASSES_ROOT, kClassKey, nullptr, REG_SZ, kClassText, sizeof kClassText),
      ERROR_SUCCESS);
  EXPECT_EQ(CoRegisterClassObject(kClass, factory_.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                  &registration_),
            S_OK);
}

RegisteredPictureControl::~RegisteredPictureControl() {
  CoRevokeClassObject(registration_);
  RegDeleteTreeW(HKEY_CLASSES_ROOT, kProgIdKey);
}

const PictureControlLog& RegisteredPictureControl::log() const {
  return *static_cast<PictureControlFactory*>(factory_.get())->log;
}

}  // namespace pv::dialogs_test

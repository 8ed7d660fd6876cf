// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/hosted_picture_editor.h"

#include <commctrl.h>

#include <algorithm>

#include "com/failure.h"
#include "com/module.h"

namespace pv {
namespace {

constexpr const wchar_t* kProgId = L"pvPicEdit32.pvPicEdit";
constexpr TwipSize kUsualSize{4800, 4800};
constexpr TwipSize kLargestSize{9600, 7200};  // as the smallest one of the form
constexpr long kHimetricPerInch = 2540;
constexpr long kTwipsPerInch = 1440;

Twips twips_of(LONG himetric) { return MulDiv(himetric, kTwipsPerInch, kHimetricPerInch); }

bool answers_the_contract(const LateBound& control) {
  return std::ranges::all_of(
      std::initializer_list<const wchar_t*>{L"NewSymbol", L"Symbol", L"Setting1", L"Setting2",
                                            L"SymbolPicture"},
      [&](const wchar_t* member) { return control.has(member); });
}

// Controls initialise themselves either before or after they get their site, as they ask for.
void initialise(IOleObject* control) {
  if (const auto stream = query<IPersistStreamInit>(control)) stream->InitNew();
}

}  // namespace

std::unique_ptr<PictureEditor> HostedPictureEditor::create(Form& form) {
  CLSID clsid{};
  Ref<IOleObject> control;
  if (FAILED(CLSIDFromProgID(kProgId, &clsid)) ||
      FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject,
                              reinterpret_cast<void**>(control.put())))) {
    return nullptr;
  }
  if (!answers_the_contract(LateBound(query<IDispatch>(control.get())))) return nullptr;
  return std::make_unique<HostedPictureEditor>(form, control);
}

HostedPictureEditor::HostedPictureEditor(Form& form, Ref<IOleObject> control)
    : Control(form, 1100, WC_STATICW, 0, WS_EX_CONTROLPARENT),
      control_(std::move(control)),
      members_(query<IDispatch>(control_.get())),
      site_(make<ControlSite>()) {
  DWORD status = 0;
  control_->GetMiscStatus(DVASPECT_CONTENT, &status);
  const bool site_first = (status & OLEMISC_SETCLIENTSITEFIRST) != 0;
  if (!site_first) initialise(control_.get());
  control_->SetClientSite(site_.get());
  if (site_first) initialise(control_.get());
}

HostedPictureEditor::~HostedPictureEditor() {
  site_->set_window(nullptr);
  control_->Close(OLECLOSE_NOSAVE);
  control_->SetClientSite(nullptr);
}

void HostedPictureEditor::start_empty() { members_.call(L"NewSymbol"); }

std::wstring HostedPictureEditor::symbol() const { return to_text(members_.get(L"Symbol")); }

void HostedPictureEditor::load(const std::wstring& symbol) {
  members_.put(L"Symbol", Variant(symbol));
}

EditorSettings HostedPictureEditor::settings() const {
  return {to_long(members_.get(L"Setting1")), to_long(members_.get(L"Setting2"))};
}

void HostedPictureEditor::apply(const EditorSettings& settings) {
  members_.put(L"Setting1", Variant(settings.first));
  members_.put(L"Setting2", Variant(settings.second));
}

Ref<IPictureDisp> HostedPictureEditor::picture(const std::wstring& symbol, long size) {
  const Bstr text(symbol);
  const Variant made = members_.call(L"SymbolPicture", {value(text), value(size)});
  auto picture = query<IPictureDisp>(to_object(made).get());
  if (!picture) throw automation_error(ErrorCode::kTypeMismatch, L"SymbolPicture gave no picture");
  return picture;
}

TwipSize HostedPictureEditor::smallest_size() const {
  SIZEL extent{};
  if (FAILED(control_->GetExtent(DVASPECT_CONTENT, &extent)) || extent.cx <= 0 || extent.cy <= 0) {
    return kUsualSize;
  }
  return {std::min(twips_of(extent.cx), kLargestSize.width),
          std::min(twips_of(extent.cy), kLargestSize.height)};
}

RECT HostedPictureEditor::inside() const {
  RECT inside{};
  GetClientRect(window(), &inside);
  return inside;
}

void HostedPictureEditor::fill_window() {
  site_->set_window(window());
  const RECT place = inside();
  check(control_->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site_.get(), 0, window(), &place));
  take_tab_stop();
}

// The dialog reaches the control with the tab key like its own ones.
void HostedPictureEditor::take_tab_stop() const {
  HWND inner = nullptr;
  if (const auto in_place = query<IOleInPlaceObject>(control_.get())) in_place->GetWindow(&inner);
  if (inner) SetWindowLongW(inner, GWL_STYLE, GetWindowLongW(inner, GWL_STYLE) | WS_TABSTOP);
}

void HostedPictureEditor::read_window() {
  if (const auto in_place = query<IOleInPlaceObject>(control_.get())) in_place->InPlaceDeactivate();
  site_->set_window(nullptr);
}

void HostedPictureEditor::on_moved() {
  const RECT place = inside();
  if (const auto in_place = query<IOleInPlaceObject>(control_.get()))
    in_place->SetObjectRects(&place, &place);
}

bool HostedPictureEditor::translate(MSG& message) {
  const auto active = site_->active_object();
  const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  return key && active && active->TranslateAccelerator(&message) == S_OK;
}

}  // namespace pv

#include "classes/txm/CTxm.h"
#include "com/fetch.h"
#include "core/text/number_text.h"

// The members that the transmitter server answers.
namespace pv {
namespace {

constexpr short kPictureConnected = 200;
constexpr short kPictureNotConnected = 201;

template <class I>
Ref<I> object_in(const Variant& answer) {
  const bool is_object = answer.vt == VT_DISPATCH || answer.vt == VT_UNKNOWN;
  if (is_nothing(answer)) return {};
  if (auto object = query<I>(is_object ? answer.punkVal : object_of(answer).get())) return object;
  throw automation_error(ErrorCode::kTypeMismatch,
                         L"the server answered an object of another class");
}

}  // namespace

template <class I>
Ref<I> CTxm::server_object(std::wstring_view property) const {
  return object_in<I>(server_.get(property));
}

Ref<_CItems> CTxm::items() const {
  if (!server_) return {};
  server_.put(L"Version", Variant(version_));
  return server_object<_CItems>(L"Items");
}

Ref<_CDimensions> CTxm::dimensions() const {
  return server_ ? server_object<_CDimensions>(L"Dimensions") : Ref<_CDimensions>();
}

Ref<_CDLists> CTxm::lists() const {
  return server_ ? server_object<_CDLists>(L"Lists") : Ref<_CDLists>();
}

Ref<_CItem> CTxm::item_with_id(long id) const {
  return fetch(items(), &_CItems::get_Item, Variant(integer_text(id)));
}

STDMETHODIMP CTxm::get_Items(_CItems** result) noexcept {
  return returning(result, [&] { return items(); });
}

STDMETHODIMP CTxm::get_Dimensions(_CDimensions** result) noexcept {
  return returning(result, [&] { return dimensions(); });
}

STDMETHODIMP CTxm::get_Lists(_CDLists** result) noexcept {
  return returning(result, [&] { return lists(); });
}

STDMETHODIMP CTxm::get_Functions(_CFunctions** result) noexcept {
  return returning(result, [&] {
    return server_ ? server_object<_CFunctions>(L"Functions") : Ref<_CFunctions>();
  });
}

std::wstring CTxm::type_name() const { return text_of(server_.get(L"TypeName")); }

STDMETHODIMP CTxm::get_TxmTypeName(BSTR* result) noexcept {
  return returning(result, [&] { return type_name(); });
}

STDMETHODIMP CTxm::get_DefaultItem(_CItem** result) noexcept {
  return returning(result, [&] { return server_object<_CItem>(L"DefaultItem"); });
}

STDMETHODIMP CTxm::get_PictureTransmitter(IPictureDisp** result) noexcept {
  return returning(result, [&] {
    const short picture = connected_ ? kPictureConnected : kPictureNotConnected;
    return object_in<IPictureDisp>(server_.call(L"Picture", {value(picture)}));
  });
}

STDMETHODIMP CTxm::get_PictureFunction(VARIANT function, IPictureDisp** result) noexcept {
  return returning(result, [&] {
    const auto functions = server_object<_CFunctions>(L"Functions");
    const short picture =
        fetch(fetch(functions, &_CFunctions::get_Item, function), &_CFunction::get_PictureID);
    return object_in<IPictureDisp>(server_.call(L"Picture", {value(picture)}));
  });
}

STDMETHODIMP CTxm::get_ComError(ComErrorsType* result) noexcept {
  return returning(result, [&] { return long_of(server_.get(L"ComError")); });
}

STDMETHODIMP CTxm::get_ComAnswerError(short* result) noexcept {
  return returning(result, [&] { return short_of(server_.get(L"ComAnswerError")); });
}

STDMETHODIMP CTxm::get_ComAnswerErrorText(BSTR* result) noexcept {
  return returning(result, [&] { return text_of(server_.get(L"ComAnswerErrorText")); });
}

STDMETHODIMP CTxm::FunctionTitle(short* function, BSTR* result) noexcept {
  return returning(
      result, [&] { return text_of(server_.call(L"FunctionTitle", {ref(*required(function))})); });
}

STDMETHODIMP CTxm::SendMessage(BSTR message, short* result) noexcept {
  return returning(result, [&] {
    short answer = 0;
    attempt([&] { answer = short_of(server_.call(L"SendMessage", {value(message)})); });
    return answer;
  });
}

STDMETHODIMP CTxm::GetMessage(BSTR* result) noexcept {
  return returning(result, [&] {
    std::wstring answer;
    attempt([&] { answer = text_of(server_.call(L"GetMessage")); });
    return answer;
  });
}

STDMETHODIMP CTxm::StartFunction(VARIANT index_key, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    select_protocol();
    const Variant key = dereferenced(index_key);
    return boolean_of(server_.call(L"StartFunction", {key, value(static_cast<IDispatch*>(this))}));
  });
}

// The server gets the name by reference, but a name that it changes stays its own affair.
bool CTxm::transfer_settings(std::wstring_view method, BSTR file_name) {
  if (SysStringLen(file_name) > 0) file_name_ = view_of(file_name);
  if (!server_) return false;
  Variant name(file_name_);
  return boolean_of(server_.call(method, {ref(name.bstrVal)}));
}

STDMETHODIMP CTxm::LoadSettings(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return transfer_settings(L"LoadSettings", file_name); });
}

STDMETHODIMP CTxm::SaveSettings(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return transfer_settings(L"SaveSettings", file_name); });
}

}  // namespace pv

// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CUtility)

/// The facade over the state that all objects of a thread share; it has no state of its own.
class CUtility final : public AutomationObject<CUtility> {
 public:
  // Constants.
  STDMETHODIMP get_ecomDIRTY(BSTR* result) noexcept override;
  STDMETHODIMP get_RegSeparator(BSTR* result) noexcept override;
  STDMETHODIMP get_PICID_TXMCONNECTED(short* result) noexcept override;
  STDMETHODIMP get_PICID_TXMNOTCONNECTED(short* result) noexcept override;
  STDMETHODIMP get_ModemPortID(short* result) noexcept override;

  // Tolerant conversions.
  STDMETHODIMP pvCBool(VARIANT value, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP pvCByte(VARIANT value, unsigned char* result) noexcept override;
  STDMETHODIMP pvCInt(VARIANT value, short* result) noexcept override;
  STDMETHODIMP pvCLng(VARIANT value, long* result) noexcept override;
  STDMETHODIMP pvCSng(VARIANT value, float* result) noexcept override;
  STDMETHODIMP pvCDbl(VARIANT value, double* result) noexcept override;
  STDMETHODIMP pvCStr(VARIANT value, BSTR* result) noexcept override;
  STDMETHODIMP pvCNumber(VARIANT value, BSTR* result) noexcept override;
  STDMETHODIMP pvCVar(VARIANT value, VARIANT* result) noexcept override;
  STDMETHODIMP IsNumber(VARIANT value, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP pvTrim(BSTR text, BSTR* result) noexcept override;

  // Settings.
  STDMETHODIMP pvGetSetting(BSTR file, BSTR section, BSTR key, BSTR fallback,
                            VARIANT* result) noexcept override;
  STDMETHODIMP pvSaveSetting(BSTR file, BSTR section, BSTR key, BSTR setting,
                             VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP pvClearSetting(BSTR file, BSTR section, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP GetIniSettings(short file, BSTR section, BSTR key, BSTR fallback, VARIANT_BOOL reset,
                              VARIANT_BOOL search_section_first, BSTR* result) noexcept override;
  STDMETHODIMP SaveIniSection(short file, BSTR section, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveIniSettings(short file, BSTR key, BSTR settings,
                               VARIANT_BOOL* result) noexcept override;

  // The application.
  STDMETHODIMP get_AppIniFileName(BSTR* result) noexcept override;
  STDMETHODIMP put_AppIniFileName(BSTR value) noexcept override;
  STDMETHODIMP get_AppHelpFileName(BSTR* result) noexcept override;
  STDMETHODIMP put_AppHelpFileName(BSTR value) noexcept override;
  STDMETHODIMP get_AppDirectory(AppDirectories directory, BSTR* result) noexcept override;
  STDMETHODIMP put_AppDirectory(AppDirectories directory, BSTR value) noexcept override;
  STDMETHODIMP get_Application(IDispatch** result) noexcept override;
  STDMETHODIMP putref_Application(IDispatch* value) noexcept override;
  STDMETHODIMP AppVersion(IDispatch* application, BSTR* result) noexcept override;
  STDMETHODIMP get_pvItem32Version(BSTR* result) noexcept override;
  STDMETHODIMP get_CurrentDate(BSTR* result) noexcept override;
  STDMETHODIMP TxmTypeName(short type, BSTR* result) noexcept override;
  STDMETHODIMP GetDataType(_CItem* item, short variable, pvDataTypes* result) noexcept override;
  STDMETHODIMP GetPictureSize(long bitmap, long dc, long* height, long* width) noexcept override;

  // Texts, windows and shared objects.
  STDMETHODIMP get_pvString(pvStringTypes id, BSTR* result) noexcept override;
  STDMETHODIMP pvMsgBox(BSTR prompt, short buttons, short picture, BSTR title, IDispatch* owner,
                        long* result) noexcept override;
  STDMETHODIMP SaveWindowPos(IDispatch* source, BSTR file, BSTR section, BSTR key,
                             VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP RestoreWindowPos(IDispatch* dest, BSTR file, BSTR section, BSTR key,
                                VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP get_Languages(_CLanguages** result) noexcept override;
  STDMETHODIMP get_PWS(_CPasswords** result) noexcept override;
  STDMETHODIMP ItemAccessEdit(_CTxm* txm, _CItem* item, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP get_TxmEvents(_CTxmEvents** result) noexcept override;
  STDMETHODIMP get_pvFile(_CFile** result) noexcept override;

  // Item symbols.
  STDMETHODIMP GetSymbolKey(_CTxm* txm, _CItem* item, short variable,
                            BSTR* result) noexcept override;
  STDMETHODIMP GetNoSymbolKey(BSTR* result) noexcept override;
  STDMETHODIMP GetNoSymbolPicture(IPictureDisp** result) noexcept override;
  STDMETHODIMP ItemSymbolGetPicture(_CItem* item, short variable,
                                    IPictureDisp** result) noexcept override;
  STDMETHODIMP ItemSymbolEdit(_CItem* item, short variable, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SymbolManager(IDispatch* images, _CTxm* txm, _CItem* item, short variable,
                             BSTR* result) noexcept override;
};

}  // namespace pv

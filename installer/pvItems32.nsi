; SPDX-FileCopyrightText: the pvItems32 authors
; SPDX-License-Identifier: MIT

; The setup program: the libraries of both bitnesses, for every user of the machine or for one.
; tools/make_installers.sh defines VERSION, ROOT (the package's folder), LISTS (that of the lists of its
; files) and OUTPUT. Silent: /S [/AllUsers | /CurrentUser] [/NoExamples] [/D=folder]
Unicode true
ManifestDPIAware true
SetCompressor /SOLID lzma

!define NAME pvItems32
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

!define MUI_ICON "${NSISDIR}/Contrib/Graphics/Icons/box-install.ico"
!define MUI_UNICON "${NSISDIR}/Contrib/Graphics/Icons/box-uninstall.ico"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR ${NAME}
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME InstallLocation
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME InstallLocation
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include x64.nsh

Name "${NAME} ${VERSION}"
BrandingText "${NAME} ${VERSION}"
OutFile "${OUTPUT}"
VIProductVersion ${VERSION}.0
VIAddVersionKey ProductName ${NAME}
VIAddVersionKey ProductVersion ${VERSION}
VIAddVersionKey FileVersion ${VERSION}
VIAddVersionKey FileDescription "Setup of ${NAME}"
VIAddVersionKey LegalCopyright "the ${NAME} authors"

!insertmacro MUI_PAGE_LICENSE "../LICENSE"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; ---- registration by the library itself, with the tool of its own bitness

; run_regsvr32 <folder of the tool> <options> <bitness>: the exit code in $0
!macro run_regsvr32 TOOLS OPTIONS BITNESS
  StrCpy $1 ""
  ${If} $MultiUser.InstallMode == CurrentUser
    StrCpy $1 "/n /i:user"
  ${EndIf}
  ClearErrors
  ExecWait '"${TOOLS}\regsvr32.exe" /s ${OPTIONS} $1 "$INSTDIR\${BITNESS}\${NAME}.dll"' $0
  ${If} ${Errors}
    StrCpy $0 -1
  ${EndIf}
!macroend

!macro register TOOLS BITNESS
  DetailPrint "Registering ${BITNESS}\${NAME}.dll"
  !insertmacro run_regsvr32 "${TOOLS}" "" ${BITNESS}
  ${If} $0 <> 0
    SetErrorLevel 3
    MessageBox MB_OK|MB_ICONSTOP "${BITNESS}\${NAME}.dll could not be registered (error $0)." /SD IDOK
    Abort
  ${EndIf}
!macroend

; 64-bit Windows keeps its own tools where this 32-bit program sees them as Sysnative.
!define TOOLS_OF_64_BITS "$WINDIR\Sysnative"

; ---- what is asked before anything is changed

; A library that a program has loaded cannot be opened for writing.
!macro refuse_when_in_use BITNESS
  ${If} ${FileExists} "$INSTDIR\${BITNESS}\${NAME}.dll"
    ClearErrors
    FileOpen $0 "$INSTDIR\${BITNESS}\${NAME}.dll" a
    ${If} ${Errors}
      SetErrorLevel 4
      MessageBox MB_OK|MB_ICONSTOP "A program uses $INSTDIR\${BITNESS}\${NAME}.dll. Close it, then try again." /SD IDOK
      Abort
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; The version that is there may have files that this one no longer has.
Function remove_installed_version
  ReadRegStr $0 SHCTX "${UNINSTALL_KEY}" InstallLocation
  ${If} ${FileExists} "$0\Uninstall.exe"
    DetailPrint "Removing the installed version"
    ExecWait '"$0\Uninstall.exe" /S /$MultiUser.InstallMode _?=$0' $1
    ${If} $1 <> 0
      SetErrorLevel 5
      MessageBox MB_OK|MB_ICONSTOP "The installed version could not be removed (error $1)." /SD IDOK
      Abort
    ${EndIf}
    Delete "$0\Uninstall.exe"
    RMDir "$0"
  ${EndIf}
FunctionEnd

; ---- the components

Section "Library" library
  SectionIn RO
  !insertmacro refuse_when_in_use x86
  !insertmacro refuse_when_in_use x64
  Call remove_installed_version
  !include "${LISTS}\install_library.nsh"
  !insertmacro register "$SYSDIR" x86
  ${If} ${IsNativeAMD64}
    !insertmacro register "${TOOLS_OF_64_BITS}" x64
  ${EndIf}

  WriteUninstaller "$INSTDIR\Uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\Uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "the ${NAME} authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\Uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S /$MultiUser.InstallMode'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Section "Examples" examples
  !include "${LISTS}\install_examples.nsh"
SectionEnd

Section "-Size"
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${library} "The library for 32-bit and 64-bit hosts, its contract and guides."
  !insertmacro MUI_DESCRIPTION_TEXT ${examples} "Hosts, a transmitter server and parameter files, in source and as programs."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Section Uninstall
  !insertmacro refuse_when_in_use x86
  !insertmacro refuse_when_in_use x64
  ${If} ${IsNativeAMD64}
    !insertmacro run_regsvr32 "${TOOLS_OF_64_BITS}" /u x64
  ${EndIf}
  !insertmacro run_regsvr32 "$SYSDIR" /u x86
  Delete "$INSTDIR\Uninstall.exe"
  !include "${LISTS}\uninstall.nsh"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd

; ---- the start

!macro use_view_of_the_system
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
!macroend

; The choice of the user sets the folder; one of the command line has precedence.
Function .onInit
  !insertmacro use_view_of_the_system
  StrCpy $R0 $INSTDIR
  !insertmacro MULTIUSER_INIT
  ${If} $R0 != ""
    StrCpy $INSTDIR $R0
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/NoExamples" $1
  ${IfNot} ${Errors}
    SectionSetFlags ${examples} 0
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro use_view_of_the_system
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

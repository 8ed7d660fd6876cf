' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Units, utilities, languages and file names as a VBScript host sees them.
suite = "UtilityVbs"

Class ApplicationInfo
  Public Title
  Public Major
  Public Minor
  Public Revision
End Class

Dim utility
Set utility = CreateObject("pvItems32.CUtility")

Sub ConversionsTakeAnyValue()
  Check utility.pvCInt("2,5"), CInt(2)
  Check utility.pvCInt(3.5), CInt(4)
  Check utility.pvCInt("40000"), CInt(0)
  Check utility.pvCByte("300"), CByte(0)
  Check utility.pvCLng("12 kg"), CLng(12)
  Check utility.pvCDbl("1,25"), CDbl(1.25)
  Check utility.pvCDbl(True), CDbl(-1)
  Check utility.pvCBool("abc"), False
  Check utility.pvCStr(True), "True"
  Check utility.pvCNumber(Empty), "0"
  Check utility.pvCNumber("2,5"), Decimal("2.5")
  Check utility.IsNumber("1,5"), True
  Check utility.IsNumber("abc"), False
  Check utility.pvTrim("  a b c "), "  abc"
End Sub
ConversionsTakeAnyValue
EndOf "ConversionsTakeAnyValue"

Sub ConversionErrorsHaveTheirNumbers()
  Dim result
  On Error Resume Next
  result = utility.pvCStr(Null)
  CheckError 94
  result = utility.pvCSng("1e39")
  CheckError 6
  result = utility.AppDirectory(21)
  CheckError 9
End Sub
ConversionErrorsHaveTheirNumbers
EndOf "ConversionErrorsHaveTheirNumbers"

Sub ErrorsNameTheMember()
  Dim result, description
  On Error Resume Next
  result = utility.AppDirectory(-1)
  description = Err.Description
  Check Err.Source, "pvItems32.CUtility"
  Err.Clear
  Check InStr(description, "AppDirectory") > 0, True
End Sub
ErrorsNameTheMember
EndOf "ErrorsNameTheMember"

Sub ConstantsAndNames()
  Check utility.ecomDIRTY, "?"
  Check utility.RegSeparator, "|"
  Check utility.ModemPortID, CInt(9)
  Check utility.TxmTypeName(1), "Fluxor"
  Check utility.TxmTypeName(0), "Unknown"
  Check Left(utility.pvItem32Version, 14), "pvItems32.dll|"
  Check Left(utility.CurrentDate, 4), CStr(Year(Date))
End Sub
ConstantsAndNames
EndOf "ConstantsAndNames"

Sub DirectoriesAreKept()
  utility.AppDirectory(20) = "C:\last"
  Check utility.AppDirectory(20), "C:\last"
  Check utility.AppDirectory(0), ""
End Sub
DirectoriesAreKept
EndOf "DirectoriesAreKept"

Sub ApplicationIsAnObjectOfTheScript()
  Dim info
  Set info = New ApplicationInfo
  info.Major = 2
  info.Minor = 5
  info.Revision = 7
  info.Title = "Kalvos"
  Set utility.Application = info
  Check utility.Application.Title, "Kalvos"
  Check utility.AppVersion(info), "2.05.07"
  On Error Resume Next
  Set utility.Application = files
  CheckError 13
  On Error GoTo 0
  Set utility.Application = Nothing
  Check utility.Application Is Nothing, True
End Sub
ApplicationIsAnObjectOfTheScript
EndOf "ApplicationIsAnObjectOfTheScript"

Sub SettingsAreKeptInAFile()
  Dim name
  name = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName())
  Check utility.pvGetSetting(name, "A", "k", "default"), "default"
  Check utility.pvSaveSetting(name, "A", "k", "value"), True
  Check utility.pvGetSetting(name, "A", "k", "default"), "value"
  Check utility.pvClearSetting(name, "A"), True
  Check utility.pvGetSetting(name, "A", "k", ""), ""
  files.DeleteFile name
End Sub
SettingsAreKeptInAFile
EndOf "SettingsAreKeptInAFile"

Function FlowTable()
  Dim units, dimensions
  Set units = CreateObject("pvItems32.CUnits")
  units.Add "m3/h", "m3/h", 3.6, 0
  units.Add "l/s", "l/s", 1, 0
  Set dimensions = CreateObject("pvItems32.CDimensions")
  dimensions.Add "Flow", "Flow", units
  Set FlowTable = dimensions
End Function

Sub ValuesAreShownInUnits()
  Dim dimensions
  Set dimensions = FlowTable()
  Check dimensions.ToUnit(10, 1, 1), "36"
  Check dimensions.ToUnit(10, "flow", "M3/H", 2), Decimal("36.00")
  Check dimensions.ToUnit(10, 1, 1, -1, 2), "36 m3/h"
  Check dimensions.ToUnit(10, 1, 1, -1, 2, True), "? m3/h"
  Check dimensions.ToUnit(10, 2, 1), ""
  Check dimensions.ToBase(36, 1, 1), CDbl(10)
  Check VarType(dimensions.ToBase(36, 2, 1)), vbEmpty
End Sub
ValuesAreShownInUnits
EndOf "ValuesAreShownInUnits"

Sub TooManyDecimalsAreCutInTheVariable()
  Dim dimensions, decimals
  Set dimensions = FlowTable()
  decimals = 12
  Check dimensions.ToUnit(10, 1, 1, decimals), Decimal("36.00000000")
  Check decimals, CInt(8)
End Sub
TooManyDecimalsAreCutInTheVariable
EndOf "TooManyDecimalsAreCutInTheVariable"

Sub CollectionsAreVisited()
  Dim dimensions, dimension, unit, captions
  Set dimensions = FlowTable()
  For Each dimension In dimensions
    For Each unit In dimension.Units
      captions = captions & unit.Caption & ";"
    Next
  Next
  Check captions, "m3/h;l/s;"
  Check dimensions(1).Units("l/s").Slope, CDbl(1)
  Check dimensions.Item(2) Is Nothing, True
End Sub
CollectionsAreVisited
EndOf "CollectionsAreVisited"

Sub TextsFollowTheLanguage()
  Dim languages, language, extensions
  Set languages = utility.Languages
  For Each language In languages
    extensions = extensions & language.Extension & ";"
  Next
  Check extensions, "us;hu;ger;ita;fra;nl;"
  languages.ActiveLanguageID = 2
  Check utility.pvString(205), "Igen"
  languages.ActiveLanguageID = 3
  Check utility.pvString(601), "Kalvos Password"
  languages.ActiveLanguageID = 1
  Check utility.pvString(205), "Yes"
  Check utility.pvString(250), "?"
  On Error Resume Next
  Set language = languages.Item(7)
  CheckError 9
  Set language = languages.Item("us")
  CheckError 5
End Sub
TextsFollowTheLanguage
EndOf "TextsFollowTheLanguage"

Sub FileNamesAreTakenApart()
  Dim name
  Set name = utility.pvFile
  name.FullName = "C:\data\logs\day1.csv"
  Check name.Drive, "C"
  Check name.Path, "\data\logs"
  Check name.Name, "day1"
  Check name.Extension, "csv"
  name.ModifyPath "D:\new"
  name.Name = "day2"
  name.Extension = "txt"
  Check name.MakeFullName, "D:\new\day2.txt"
  Check name.CreateFileName("", ""), "*.*"
  name.Clear
  Check name.FullName, ""
End Sub
FileNamesAreTakenApart
EndOf "FileNamesAreTakenApart"

WScript.Echo "DONE"

' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Documents a transmitter: loads its settings files through pvItems32 and prints its items.
'
'   cscript //nologo document.vbs <data folder> <version name> <language index>
'
' One row per variable: item, name, value (or its meaning), unit, the same value in another unit, and
' the password levels needed to read and write. Ends with DONE; anything wrong ends it with exit code 1.
Option Explicit

' Scripts see no constants of a type library, so those in use are named here.
Const kForReading = 1
Const kShowValueOnly = 0
Const kShowUnitOnly = 1
Const kShowValueAndUnit = 2
Const kDimensionNone = 17
Const kLastNumericType = 4
Const kAccessUpdate = 64
Const kAccessMask = 128

Const kTextItemID = 316
Const kTextItemName = 317
Const kTextUnit = 319
Const kTextEnableRead = 510
Const kTextEnableWrite = 511
Const kTextUpdate = 512
Const kTextMask = 513
Const kTextAlways = 520

Const kWidthID = 9
Const kWidthName = 25
Const kWidthValue = 22
Const kWidthUnit = 9
Const kWidthOther = 22

Dim files, utility, items, dimensions, lists

On Error Resume Next
Main
If Err.Number <> 0 Then
  WScript.Echo "Error " & Err.Number & ": " & Err.Description
  WScript.Quit 1
End If
WScript.Echo "DONE"

Sub Main()
  Dim arguments
  Set arguments = WScript.Arguments
  If arguments.Count <> 3 Then
    Fail "Usage: document.vbs <data folder> <version name> <language index>"
  End If

  Set files = CreateObject("Scripting.FileSystemObject")
  Set utility = CreateObject("pvItems32.CUtility")
  Set items = CreateObject("pvItems32.CItems")
  Set dimensions = CreateObject("pvItems32.CDimensions")
  Set lists = CreateObject("pvItems32.CDLists")

  SelectLanguage arguments.Item(2)
  Load dimensions, arguments.Item(0), "fluxor.dim"
  Load lists, arguments.Item(0), "fluxor.lst"
  Load items, arguments.Item(0), "fluxor.itm"
  Load items.Versions, arguments.Item(0), "fluxor.ver"
  ReadValues arguments.Item(0), "fluxor.val"
  SelectVersion arguments.Item(1)

  PrintItems
  PrintAccessLegend
End Sub

Sub Fail(message)
  WScript.Echo message
  WScript.Quit 1
End Sub

' --- Loading ----------------------------------------------------------------------------------------

Sub SelectLanguage(text)
  Dim index, known
  index = utility.pvCInt(text)
  known = utility.Languages.Count
  If index < 1 Or index > known Then
    Fail "There is no language " & text & ": choose 1 to " & known & "."
  End If
  utility.Languages.ActiveLanguageID = index
End Sub

Function ExistingPath(folder, name)
  ExistingPath = files.BuildPath(folder, name)
  If Not files.FileExists(ExistingPath) Then
    Fail "There is no file " & ExistingPath & "."
  End If
End Function

' `table` is any of the four collections that read themselves from a settings file.
Sub Load(table, folder, name)
  Dim path
  path = ExistingPath(folder, name)
  If Not table.LoadSettingsNew(path) Then
    Fail "Cannot load " & path & "."
  End If
End Sub

Sub SelectVersion(name)
  Dim version, known
  If items.Versions.Item(name) Is Nothing Then
    For Each version In items.Versions
      known = known & " " & version.Name
    Next
    Fail "There is no software version " & name & ": choose one of" & known & "."
  End If
  items.Version = name
End Sub

' Lines of item key|variable|raw value. A variable without a line stays unknown.
Sub ReadValues(folder, name)
  Dim item, variable, stream, fields, path
  path = ExistingPath(folder, name)
  For Each item In items
    For Each variable In item.Variables
      variable.Dirty = True
    Next
  Next
  Set stream = files.OpenTextFile(path, kForReading)
  Do Until stream.AtEndOfStream
    fields = Split(stream.ReadLine, "|")
    Set item = items.Item(fields(0))
    If item Is Nothing Then
      Fail path & " names an unknown item: " & fields(0)
    End If
    StoreValue item.Variables.Item(utility.pvCInt(fields(1))), fields(2)
  Loop
  stream.Close
End Sub

Sub StoreValue(variable, text)
  If variable.DataType <= kLastNumericType And variable.ListID = 0 Then
    variable.Value = utility.pvCDbl(text)
  Else
    variable.Value = text
  End If
  variable.Dirty = False
End Sub

' --- Printing ---------------------------------------------------------------------------------------

Sub PrintItems()
  Dim entry, item, index, printed
  WScript.Echo "Software version " & items.Version & ": " & items.Count & " of " & _
      items.AllItemCount & " items, " & utility.Languages.ActiveLanguage.Name
  WScript.Echo ""
  PrintRow utility.pvString(kTextItemID), utility.pvString(kTextItemName), OwnWord(0), _
      utility.pvString(kTextUnit), OwnWord(1), OwnWord(2)
  PrintRow String(kWidthID, "-"), String(kWidthName, "-"), String(kWidthValue, "-"), _
      String(kWidthUnit, "-"), String(kWidthOther, "-"), String(8, "-")
  printed = 0
  For Each entry In items.Versions.Item(items.Version).VerItems
    Set item = items.Item(entry.Key)
    If item Is Nothing Then
      Fail "Item " & entry.Key & " has no item " & entry.IndexKey & " behind it."
    End If
    For index = 1 To item.Variables.Count
      PrintVariable entry, item, index
    Next
    printed = printed + 1
  Next
  If printed <> items.Count Then
    Fail "The version has " & items.Count & " items, but " & printed & " were printed."
  End If
End Sub

Sub PrintVariable(entry, item, index)
  Dim variable, id, levels
  Set variable = item.Variables.Item(index)
  id = entry.Key
  levels = AccessText(item.Access)
  If index > 1 Then
    id = id & "." & index
    levels = ""
  ElseIf item.Key <> entry.Key Then
    id = id & " > " & item.Key
  End If
  PrintRow id, variable.Caption, ValueText(item, variable), UnitText(variable), _
      OtherUnitText(variable), levels
End Sub

Sub PrintRow(id, name, value, unit, other, levels)
  WScript.Echo Fit(id, kWidthID) & " " & Fit(name, kWidthName) & " " & Fit(value, kWidthValue) & " " & _
      Fit(unit, kWidthUnit) & " " & Fit(other, kWidthOther) & " " & levels
End Sub

Function Fit(text, width)
  If Len(text) > width Then
    Fit = Left(text, width - 2) & ".."
  Else
    Fit = text & Space(width - Len(text))
  End If
End Function

' Physical values have units; enumerated values and plain texts have none.
Function IsPhysical(variable)
  IsPhysical = (variable.ListID = 0 And variable.DimensionID <> kDimensionNone)
End Function

Function ValueText(item, variable)
  If (item.Access And kAccessMask) <> 0 Then
    ValueText = String(8, "*")
  ElseIf variable.Dirty Then
    ValueText = utility.ecomDIRTY
  ElseIf variable.ListID > 0 Then
    ValueText = MeaningOf(variable)
  ElseIf IsPhysical(variable) Then
    ValueText = dimensions.ToUnit(variable.Value, variable.DimensionID, variable.UnitID, _
        variable.Decimals, kShowValueOnly, variable.Dirty)
  Else
    ValueText = utility.pvCStr(variable.Value)
  End If
End Function

' A raw value that its list does not know is shown as it is.
Function MeaningOf(variable)
  Dim list, member
  MeaningOf = utility.pvCStr(variable.Value)
  Set list = lists.Item(variable.ListID)
  If Not list Is Nothing Then
    Set member = list.ListMembers.Item(utility.pvCStr(variable.Value))
    If Not member Is Nothing Then
      MeaningOf = member.Caption
    End If
  End If
End Function

Function UnitText(variable)
  UnitText = ""
  If IsPhysical(variable) Then
    UnitText = dimensions.ToUnit(variable.Value, variable.DimensionID, variable.UnitID, -1, _
        kShowUnitOnly, variable.Dirty)
  End If
End Function

' The same value in the dimension's next unit, with two decimals more than in its own.
Function OtherUnitText(variable)
  Dim count, other
  OtherUnitText = ""
  If IsPhysical(variable) Then
    count = dimensions.Item(variable.DimensionID).Units.Count
    If count > 1 Then
      other = variable.UnitID Mod count + 1
      OtherUnitText = dimensions.ToUnit(variable.Value, variable.DimensionID, other, _
          variable.Decimals + 2, kShowValueAndUnit, variable.Dirty)
    End If
  End If
End Function

Function AccessText(access)
  AccessText = "R" & ((access And 56) \ 8) & " W" & (access And 7)
  If (access And kAccessUpdate) <> 0 Then
    AccessText = AccessText & " U"
  End If
  If (access And kAccessMask) <> 0 Then
    AccessText = AccessText & " *"
  End If
End Function

Sub PrintAccessLegend()
  Dim level
  WScript.Echo ""
  WScript.Echo "R  " & utility.pvString(kTextEnableRead) & "   W  " & utility.pvString(kTextEnableWrite)
  For level = 0 To 4
    WScript.Echo level & "  " & utility.pvString(kTextAlways + level)
  Next
  WScript.Echo "U  " & utility.pvString(kTextUpdate)
  WScript.Echo "*  " & utility.pvString(kTextMask)
End Sub

' The host's own headings; everything else comes from the library. Accents by number keep this file
' readable in every code page.
Function OwnWord(index)
  Dim words
  Select Case utility.Languages.ActiveLanguageID
    Case 2
      words = Array(Chr(201) & "rt" & Chr(233) & "k", "M" & Chr(225) & "s egys" & Chr(233) & "g", _
          "Hozz" & Chr(225) & "f" & Chr(233) & "r" & Chr(233) & "s")
    Case 3
      words = Array("Wert", "Andere Einheit", "Zugriff")
    Case 4
      words = Array("Valore", "Altra unit" & Chr(224), "Accesso")
    Case 5
      words = Array("Valeur", "Autre unit" & Chr(233), "Acc" & Chr(232) & "s")
    Case 6
      words = Array("Waarde", "Andere eenheid", "Toegang")
    Case Else
      words = Array("Value", "Other unit", "Access")
  End Select
  OwnWord = words(index)
End Function

' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Items, variables, versions and display lists as a VBScript host sees them.
suite = "ItemsVbs"

' A host's list control.
Class ListControl
  Public Texts
  Public Cleared
  Public Sub Clear()
    Texts = ""
    Cleared = True
  End Sub
  Public Sub AddItem(text)
    Texts = Texts & text & ";"
  End Sub
End Class

Class NoListControl
  Public Texts
End Class

Class FailingControl
  Public Sub Clear()
    Err.Raise 5
  End Sub
  Public Sub AddItem(text)
  End Sub
End Class

Function LoadedItems()
  Set LoadedItems = CreateObject("pvItems32.CItems")
  If Not LoadedItems.LoadSettingsNew(example_data & "fluxor.itm") Then WScript.Echo "  no items"
  If Not LoadedItems.Versions.LoadSettingsNew(example_data & "fluxor.ver") Then WScript.Echo "  no versions"
End Function

Function MadeVariables(keys)
  Dim key
  Set MadeVariables = CreateObject("pvItems32.CVariables")
  For Each key In keys
    MadeVariables.Add key, "Caption " & key, "", "", 0, 1, 1, 2, 0, 0, 4
  Next
End Function

Sub SettingsFilesLoad()
  Dim items, lists
  Set items = LoadedItems()
  Check items.AllItemCount, CLng(66)
  Check items.Count, CLng(54)
  Check items.Changed, False
  Check items.Versions.Count, CLng(3)
  Set lists = CreateObject("pvItems32.CDLists")
  Check lists.LoadSettingsNew(example_data & "fluxor.lst"), True
  Check lists.Count, CLng(12)
  Check lists.LoadSettingsNew(example_data & "missing.lst"), False
  Check items.LoadSettingsNew(""), False
  Check items.AllItemCount, CLng(66)
End Sub
SettingsFilesLoad
EndOf "SettingsFilesLoad"

Sub SettingsFilesComeBackAsSaved()
  Dim items, reloaded, name
  Set items = LoadedItems()
  Set reloaded = CreateObject("pvItems32.CItems")
  name = TemporaryName()
  items.Changed = True
  Check items.SaveSettingsNew(name), True
  Check items.Changed, False
  Check reloaded.LoadSettingsNew(name), True
  files.DeleteFile name
  Check reloaded.AllItemCount, CLng(66)
  Check reloaded.Item("70").Caption(2), items.Item("70").Caption(2)
  Check items.SaveSettingsNew("Z:\no\such\folder\a.itm"), False
End Sub
SettingsFilesComeBackAsSaved
EndOf "SettingsFilesComeBackAsSaved"

Sub ForEachGoesOverTheItems()
  Dim items, item, variable, seen, variables
  Set items = LoadedItems()
  seen = 0
  variables = 0
  For Each item In items
    seen = seen + 1
    If seen = 1 Then Check item.Key, "1"
    For Each variable In item.Variables
      variables = variables + 1
    Next
  Next
  Check seen, CInt(66)
  Check variables > 66, True
End Sub
ForEachGoesOverTheItems
EndOf "ForEachGoesOverTheItems"

Sub ForEachIsNotDisturbedByRemoving()
  Dim variables, variable, seen
  Set variables = MadeVariables(Array("a", "b", "c"))
  For Each variable In variables
    seen = seen & variable.Key
    variables.Remove variable.Key
  Next
  Check seen, "abc"
  Check variables.Count, CLng(0)
End Sub
ForEachIsNotDisturbedByRemoving
EndOf "ForEachIsNotDisturbedByRemoving"

Sub DefaultMembersTakePositionsAndKeys()
  Dim items, lists
  Set items = LoadedItems()
  Check items("1").Caption, "Volume flow"
  Check items(1).Caption, "Volume flow"
  Check items(1).Variables(1).Caption, "Volume flow"
  Check items("1").Variables("1").Caption, "Volume flow"
  Check items.Versions("2.30").ItemCount, CInt(64)
  Check items.Versions(1).VerItems("32").IndexKey, "160"
  Set lists = CreateObject("pvItems32.CDLists")
  lists.LoadSettingsNew example_data & "fluxor.lst"
  Check lists("parity").ListMembers("1").Caption, "Odd"
End Sub
DefaultMembersTakePositionsAndKeys
EndOf "DefaultMembersTakePositionsAndKeys"

Sub NumericTextIsAKey()
  Dim variables
  Set variables = MadeVariables(Array("2", "1"))
  Check variables("1").Caption, "Caption 1"
  Check variables(1).Caption, "Caption 2"
  Check variables(CDbl(2)).Caption, "Caption 1"
  Check variables(CByte(2)).Caption, "Caption 1"
  Check variables("1").Key, "1"
End Sub
NumericTextIsAKey
EndOf "NumericTextIsAKey"

Sub ScriptVariablesAreTakenByReference()
  Dim items, item, index, key, id, yes, wait, text
  Set items = CreateObject("pvItems32.CItems")
  key = "k"
  id = 7
  yes = True
  wait = 1.5
  Set item = items.Add(key, id, yes, id, yes, yes, wait, id)
  Check item.Key, "k"
  Check item.SmartWait, CSng(1.5)
  item.Variables.Add key, key, key, key, id, id, id, id, wait, id, id
  index = 1
  text = "new caption"
  item.Caption(index) = text
  Check item.Caption(index), "new caption"
  Check item.CheckVarIndex(index), CInt(1)
  index = "k"
  Check items(index).Key, "k"
  Check items.Item(index).Variables.Item(index).ListID, CInt(7)
  Check key, "k"
  Check id, CInt(7)
End Sub
ScriptVariablesAreTakenByReference
EndOf "ScriptVariablesAreTakenByReference"

Sub ItemsReadTheirVariables()
  Dim items, item
  Set items = LoadedItems()
  Set item = items("70")
  Check item.Caption, item.Caption(1)
  Check item.Caption(99), item.Caption(1)
  Check item.Caption(0), item.Caption(1)
  Check item.Caption(2), item.Variables(2).Caption
  Check item.Value, "0"
  Check items("1").Value, CSng(0)
  item.Value(2) = 12.5
  Check item.Variables(2).Value, 12.5
  item.Length(5) = 9
  Check item.Length, CInt(9)
End Sub
ItemsReadTheirVariables
EndOf "ItemsReadTheirVariables"

Sub VersionsSelectTheItems()
  Dim items
  Set items = LoadedItems()
  items.Version = "1.10"
  Check items.Count, CLng(54)
  Check items("32").ItemID, CInt(160)
  Check items("6") Is Nothing, True
  Check items(6) Is Nothing, True
  items.Version = "2.30"
  Check items.Count, CLng(64)
  Check items("32").ItemID, CInt(32)
  items.Version = "9.99"
  Check items.Count, CLng(54)
  Check items("32") Is Nothing, True
  items.Version = ""
  Check items("6").ItemID, CInt(6)
End Sub
VersionsSelectTheItems
EndOf "VersionsSelectTheItems"

Sub WhatItemsDoNotHaveIsNothing()
  Dim items
  Set items = LoadedItems()
  Check items("no such key") Is Nothing, True
  Check items(0) Is Nothing, True
  Check items(67) Is Nothing, True
  Check items.Add("1", 1, True, 1, False, False, 0.5, 4) Is Nothing, True
  Check items.AllItemCount, CLng(66)
  Check items.Versions("no such version") Is Nothing, True
End Sub
WhatItemsDoNotHaveIsNothing
EndOf "WhatItemsDoNotHaveIsNothing"

Sub ErrorsHaveNumberSourceAndDescription()
  Dim variables, found, versions, members, item
  Set variables = MadeVariables(Array("a"))
  Set versions = CreateObject("pvItems32.CVersions")
  Set members = CreateObject("pvItems32.CDListMembers")
  Set item = CreateObject("pvItems32.CItem")
  On Error Resume Next
  Set found = variables.Item(9)
  CheckErrorText 9, "pvItems32.CVariables", "9"
  Set found = variables.Item("unknown")
  CheckErrorText 5, "pvItems32.CVariables", "unknown"
  variables.Remove 0
  CheckErrorText 9, "pvItems32.CVariables", "Remove"
  variables.Add "A", "", "", "", 0, 1, 1, 2, 0, 0, 4
  CheckErrorText 457, "pvItems32.CVariables", "Add"
  versions.Add "V", 1
  Check CLng(Err.Number), CLng(0)
  versions.Add "v", 2
  CheckErrorText 457, "pvItems32.CVersions", "key"
  versions.Add "W", 40000
  CheckErrorText 6, "pvItems32.CVersions", "40000"
  members.Add "1", "On", ""
  members.Add "1", "Off", ""
  CheckErrorText 457, "pvItems32.CDListMembers", "Add"
  found = item.Caption
  CheckErrorText 9, "pvItems32.CVariables", "Item"
  item.Copy Nothing
  CheckErrorText 91, "pvItems32.CItem", "Copy"
End Sub
ErrorsHaveNumberSourceAndDescription
EndOf "ErrorsHaveNumberSourceAndDescription"

Sub TablesAreRenamed()
  Dim versions, members
  Set versions = CreateObject("pvItems32.CVersions")
  versions.Add "a", 1
  versions.Add "b", 2
  Check versions.ChangeTitle(1, "first"), True
  Check versions(1).Name, "first"
  Check versions("FIRST").ItemCount, CInt(1)
  Check versions.ChangeTitle(5, "x"), False
  Set members = CreateObject("pvItems32.CDListMembers")
  members.Add "0", "Off", ""
  Check members.ChangeKey(1, 7), True
  Check members("7").Caption, "Off"
End Sub
TablesAreRenamed
EndOf "TablesAreRenamed"

Sub ListsFillAControl()
  Dim lists, control, none, failing
  Set lists = CreateObject("pvItems32.CDLists")
  lists.LoadSettingsNew example_data & "fluxor.lst"
  Set control = New ListControl
  control.Texts = "old"
  Check lists.FillList(2, control), True
  Check control.Texts, "Off;On;"
  control.Cleared = False
  Check lists.FillList(99, control), False
  Check control.Cleared, True
  Set none = New NoListControl
  Check lists.FillList(2, none), False
  Set failing = New FailingControl
  Check lists.FillList(2, failing), False
  Check lists.FillList(2, Nothing), False
End Sub
ListsFillAControl
EndOf "ListsFillAControl"

Sub RecordsLoadAndSave()
  Dim variable, member
  Set variable = CreateObject("pvItems32.CVariable")
  Check variable.Save(), "|New|New variable|0|1|1|2||0|1||"
  Check variable.Load("1|Flow|Text|0|11|4|2||0|4|PUMP|"), True
  Check variable.Save(), "1|Flow|Text|0|11|4|2||0|4|PUMP|"
  Check variable.Value, CSng(0)
  Check variable.Load("2|Short"), False
  Check variable.Caption, "Short"
  Set member = CreateObject("pvItems32.CDListMember")
  Check member.Load("1|On|o|"), True
  Check member.Save(), "1|On|o|"
End Sub
RecordsLoadAndSave
EndOf "RecordsLoadAndSave"

WScript.Echo "DONE"

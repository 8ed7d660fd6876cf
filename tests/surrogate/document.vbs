' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' A script host that reaches the library through the surrogate process.
suite = "SurrogateVbs"

Dim items, dimensions, decimals, item, count, name, variables

Set items = CreateObject("pvItems32.CItems")
Check items.LoadSettingsNew(example_data & "fluxor.itm"), True
Check items.AllItemCount, CLng(66)
Set item = items.Item("1")
Check item.Caption, "Volume flow"
item.Value = 12.5
Check items.Item(1).Value, 12.5
count = 0
For Each item In items
  count = count + 1
Next
Check count, 66
EndOf "OpensADocument"

Set dimensions = CreateObject("pvItems32.CDimensions")
Check dimensions.LoadSettingsNew(example_data & "fluxor.dim"), True
decimals = 99
Check Len(dimensions.ToUnit(1.5, 1, 1, decimals)) > 0, True
Check decimals < 99, True
EndOf "ChangesAVariableOfTheScript"

name = TemporaryName()
Check items.SaveSettingsNew(name), True
Check files.FileExists(name), True
files.DeleteFile name
EndOf "SavesTheDocument"

Set variables = items.Item("1").Variables
On Error Resume Next
Set item = variables.Item(99)
CheckErrorText 9, "pvItems32.CVariables", "CVariables.Item"
On Error GoTo 0
EndOf "RaisesErrors"

WScript.Echo "DONE"

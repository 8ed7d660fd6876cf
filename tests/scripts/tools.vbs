' SPDX-FileCopyrightText: the pvItems32 authors
' SPDX-License-Identifier: MIT

' Item maintenance, statistics, directories, errors and passwords as a VBScript host sees them.

suite = "ToolsVbs"

Function NewItems(keys)
  Dim key, id
  Set NewItems = CreateObject("pvItems32.CItems")
  id = 0
  For Each key In keys
    id = id + 1
    NewItems.Add key, id, True, 1, False, False, 0.5, 4
  Next
End Function

Function KeysOf(items)
  Dim item
  For Each item In items
    KeysOf = KeysOf & item.Key & ";"
  Next
End Function

Sub ItemsAreSortedByNumber()
  Dim items
  Set items = NewItems(Array("10", "9", "100"))
  Check items.Sort, True
  Check KeysOf(items), "9;10;100;"
  Check items.Sort(False), True
  Check KeysOf(items), "100;10;9;"
  items.Add "", 4, True, 1, False, False, 0.5, 4
  Check items.Sort, False
  Check items.AllItemCount, CLng(4)
End Sub
ItemsAreSortedByNumber
EndOf "ItemsAreSortedByNumber"

Sub ItemsChangeNumberAndKey()
  Dim items, key
  Set items = NewItems(Array("1", "2", "3"))
  Check items.ChangeID(2, 59), True
  Check items("59").ItemID, CInt(59)
  Check items.ChangeID(1, 3), False
  Check items.ChangeID(9, 4), False
  key = "A7"
  Check items.ChangeKey(1, key), True
  Check items.ChangeKey(key, 7), True
  Check KeysOf(items), "59;3;7;"
  Check items.ChangeKey("7", "3"), False
  Check items.ChangeKey(Null, "x"), False
  Check KeysOf(items), "59;3;7;"
End Sub
ItemsChangeNumberAndKey
EndOf "ItemsChangeNumberAndKey"

Sub ItemTextsGoToTheFileOfTheLanguage()
  Dim items, name, written, text
  Set items = NewItems(Array("1"))
  items(1).Variables.Add "1", "Flow", "Volume per time", "", 0, 1, 1, 2, 0, 0, 4
  name = TemporaryName
  written = Left(name, InStrRev(name, ".") - 1) & ".001"
  Check items.SaveTextSettings(name), True
  Check files.FileExists(name), False
  text = files.OpenTextFile(written).ReadAll
  Check InStr(text, "VAR1=Flow|Volume per time") > 0, True
  items(1).Caption(1) = "Changed"
  Check items.SaveTextSettings(name, items(1), 2), False
  Check items.SaveTextSettings(name, items(1), 1), True
  Check InStr(files.OpenTextFile(written).ReadAll, "VAR1=Changed|Volume per time") > 0, True
  files.DeleteFile written
  Check items.SaveTextSettings("Q:\none\x.txt", Nothing), False
End Sub
ItemTextsGoToTheFileOfTheLanguage
EndOf "ItemTextsGoToTheFileOfTheLanguage"

Class ImageList
  Public ListImages
End Class

Sub SymbolsNeedAnImageList()
  Check NewItems(Array("1")).LoadItemSymbols(New ImageList, "C:\"), CLng(0)
  Check NewItems(Array()).LoadItemSymbols(Nothing, "C:\"), CLng(0)
End Sub
SymbolsNeedAnImageList
EndOf "SymbolsNeedAnImageList"

' A collection whose members are found through its default property.
Class FoundImages
  Private images
  Private Sub Class_Initialize
    Set images = CreateObject("Scripting.Dictionary")
  End Sub
  Public Sub Add(index, key, picture)
    Dim image
    Set image = New FoundImage
    image.Key = key
    images.Add key, image
  End Sub
  Public Default Property Get Item(key)
    If Not images.Exists(key) Then Err.Raise 35601
    Set Item = images(key)
  End Property
  Public Property Get Count
    Count = images.Count
  End Property
End Class

Class FoundImage
  Public Key
End Class

Sub SymbolsAreAddedOnceToAnImageListOfTheScript()
  Dim list, item, txm, utility
  Set list = New ImageList
  Set list.ListImages = New FoundImages
  Set item = NewItems(Array("120"))(1)
  item.Variables.Add "1", "Flow", "Text", "S1:A1024", 0, 1, 1, 2, 0, 0, 4
  item.ItemID = 120
  Set txm = CreateObject("pvItems32.CTxm")
  txm.TxmType = 1
  Set utility = CreateObject("pvItems32.CUtility")
  Check utility.SymbolManager(list, txm, item), "SYM1.120.1"
  Check utility.SymbolManager(list, txm, item), "SYM1.120.1"
  Check list.ListImages.Count, CLng(2)
  Check list.ListImages.Item("NOSYMBOL").Key, "NOSYMBOL"
End Sub
SymbolsAreAddedOnceToAnImageListOfTheScript
EndOf "SymbolsAreAddedOnceToAnImageListOfTheScript"

Sub StatisticsOfASeries()
  Dim series, reading
  Set series = CreateObject("pvItems32.CStatistics")
  For Each reading In Array(2, 4, 4, 4, 5, 5, 7, 9)
    series.Add reading
  Next
  Check series.Average, CSng(0)
  series.Refresh
  Check series.Sample, CLng(8)
  Check series.Value, CSng(9)
  Check series.Sum, CDbl(40)
  Check series.SD2, CDbl(232)
  Check series.S2D, CDbl(1600)
  Check series.Average, CSng(5)
  Check series.Min, CSng(2)
  Check series.Max, CSng(9)
  Check series.Range, CSng(7)
  Check series.STD, CSng(Sqr(32 / 7))
  Check series.FPMin(1.5, 2), CSng(1.5)
  Check series.FPMax(1.5, 2), CSng(2)
  series.Reset
  Check series.Sample, CLng(0)
  Check series.STD, CSng(0)
End Sub
StatisticsOfASeries
EndOf "StatisticsOfASeries"

Sub DirectoriesAreListed()
  Dim folder, directory, entry, lines
  folder = TemporaryName
  files.CreateFolder folder
  files.CreateFolder folder & "\sub"
  files.CreateTextFile(folder & "\b.csv").Close
  files.CreateTextFile(folder & "\A.txt").Close
  Set directory = CreateObject("pvItems32.CDirectory")
  For Each entry In directory.GetFileList(folder)
    lines = lines & entry.DirType & " " & files.GetFileName(entry.Path) & ";"
  Next
  Check lines, "1 sub;0 A.txt;0 b.csv;"
  Check directory.GetFileList(folder, "*.CSV").Count, CLng(2)
  Check directory(2).Path, folder & "\b.csv"
  directory(2).Tag = "mine"
  Check directory(2).Tag, "mine"
  files.DeleteFolder folder
  Check directory.GetFileList(folder).Count, CLng(0)
  Check directory.Add("C:\x", 0, "key").Path, "C:\x"
  On Error Resume Next
  directory.Add "C:\y", 0, "KEY"
  CheckErrorText 457, "pvItems32.CDirectory", "Add"
End Sub
DirectoriesAreListed
EndOf "DirectoriesAreListed"

Sub ErrorsAreLogged()
  Dim errors, noon, error
  Set errors = CreateObject("pvItems32.Cerrors")
  noon = DateSerial(2024, 5, 17) + TimeSerial(12, 0, 0)
  errors.Add 10, "first", noon
  Set error = errors.Add("20", "second", noon, errors)
  errors.Add 30, "third", noon, 7
  Check error.Number, CLng(20)
  Check error.When, noon
  Check error.Tag Is errors, True
  error.Tag = Empty
  Check errors(1).Tag, Empty
  errors.Remove 2
  Check errors(2).Description, "third"
  Check errors(2).Index, CLng(2)
  errors.Clear
  Check errors.Count, CLng(0)
  On Error Resume Next
  errors.Remove 1
  CheckErrorText 9, "pvItems32.Cerrors", "Remove"
  errors.Add "abc", "x", noon
  CheckError 13
End Sub
ErrorsAreLogged
EndOf "ErrorsAreLogged"

Sub PasswordsAreSavedAndLoaded()
  Dim store, text
  Set store = CreateObject("pvItems32.CPasswords")
  Check store.Save, "0|"
  Check store.Add("one", "one").Status, True
  Check store.Add("two", "").Status, False
  Check store(2).Index, CInt(2)
  text = store.Save
  store.Clear
  Check store.Load(text), CInt(2)
  Check store(1).Reference, "one"
  Check store(2).Current, ""
  Check store.Status, True
  Check store.Edit(9), False
  Check store.Encode64(Chr(1) & Chr(2) & Chr(3)), "BIwA"
  Check store.Decode64("BIwA"), Chr(1) & Chr(2) & Chr(3)
  text = "BI"
  Check store.Decode64(text), Chr(1)
  Check text, "BI"
End Sub
PasswordsAreSavedAndLoaded
EndOf "PasswordsAreSavedAndLoaded"

Sub PasswordErrorsHaveTheirNumbers()
  Dim store, result
  Set store = CreateObject("pvItems32.CPasswords")
  store.Add "kept", ""
  On Error Resume Next
  result = store.Load("abc")
  CheckErrorText 13, "pvItems32.CPasswords", "Load"
  Check store.Count, CLng(1)
  result = store.Load("2|BA**||")
  CheckErrorText 9, "pvItems32.CPasswords", "Load"
  Check store(1).Reference, Chr(1)
  result = store.Status(2)
  CheckError 9
  store.Remove "x"
  CheckError 5
End Sub
PasswordErrorsHaveTheirNumbers
EndOf "PasswordErrorsHaveTheirNumbers"

WScript.Echo "DONE"

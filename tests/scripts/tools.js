// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Item maintenance, statistics, directories, errors and passwords as a JScript host sees them.

suite = "ToolsJs";

function newItems(keys) {
  var items = new ActiveXObject("pvItems32.CItems");
  for (var i = 0; i < keys.length; i += 1) {
    items.Add(keys[i], i + 1, true, 1, false, false, 0.5, 4);
  }
  return items;
}

function listOf(collection, property) {
  var values = [];
  for (var members = new Enumerator(collection); !members.atEnd(); members.moveNext()) {
    values.push(members.item()[property]);
  }
  return values.join(",");
}

test("ItemsAreSortedByNumber", function () {
  var items = newItems(["10", "9", "100"]);
  check(items.Sort(), true);
  check(listOf(items, "Key"), "9,10,100");
  check(items.Sort(false), true);
  check(listOf(items, "Key"), "100,10,9");
  check(newItems(["2", "", "1"]).Sort(), false);
});

test("ItemsChangeNumberAndKey", function () {
  var items = newItems(["1", "2", "3"]);
  check(items.ChangeID(2, 59), true);
  check(items("59").ItemID, 59);
  check(items.ChangeID(1, 3), false);
  check(items.ChangeKey(1, "A7"), true);
  check(items.ChangeKey("a7", 7), true);
  check(listOf(items, "Key"), "59,3,7");
  check(items.ChangeKey("7", "3"), false);
  check(items.ChangeKey("none", "x"), false);
  check(items.ChangeKey(undefined, "x"), false);
});

test("ItemTextsAreWrittenForOneItem", function () {
  var items = newItems(["1", "2"]);
  items(2).Variables.Add("1", "Flow", "Text", "", 0, 1, 1, 2, 0, 0, 4);
  var name = temporaryName();
  var written = name.substr(0, name.lastIndexOf(".")) + ".001";
  check(items.SaveTextSettings(name, items(2)), true);
  var text = files.OpenTextFile(written).ReadAll();
  check(text.indexOf("[ITEM2]") >= 0 && text.indexOf("VAR1=Flow|Text") > 0, true);
  check(text.indexOf("[Items]"), -1);
  check(items.SaveTextSettings(name, items(2), 5), false);
  files.DeleteFile(written);
});

test("SymbolsNeedAnImageList", function () {
  check(newItems(["1"]).LoadItemSymbols({ ListImages: {} }, "C:\\"), 0);
  check(newItems([]).LoadItemSymbols(null, "C:\\"), 0);
});

test("SymbolsAreAddedOnceToAnImageListOfTheScript", function () {
  var images = [];
  var list = {
    ListImages: {
      Add: function (index, key, picture) { images.push({ Key: key, Picture: picture }); },
      Item: function (wanted) {
        for (var i = 0; i < images.length; i += 1) if (images[i].Key === wanted) return images[i];
        throw new Error("no such image");
      }
    }
  };
  var item = newItems(["120"])(1);
  item.Variables.Add("1", "Flow", "Text", "S1:A1024", 0, 1, 1, 2, 0, 0, 4);
  item.ItemID = 120;
  var txm = new ActiveXObject("pvItems32.CTxm");
  txm.TxmType = 1;
  var utility = new ActiveXObject("pvItems32.CUtility");
  for (var round = 0; round < 2; round += 1) {
    check(utility.SymbolManager(list, txm, item), "SYM1.120.1");
  }
  check(images.length, 2);
  check(images[0].Key + " " + images[1].Key, "NOSYMBOL SYM1.120.1");
});

test("StatisticsOfASeries", function () {
  var series = new ActiveXObject("pvItems32.CStatistics");
  var readings = [2, 4, 4, 4, 5, 5, 7, 9];
  for (var i = 0; i < readings.length; i += 1) series.Add(readings[i]);
  check(series.Average, 0);
  series.Refresh();
  check([series.Sample, series.Value, series.Sum, series.SD2, series.S2D, series.Average, series.Min,
         series.Max, series.Range].join(","), "8,9,40,232,1600,5,2,9,7");
  check(Math.abs(series.STD - Math.sqrt(32 / 7)) < 1e-6, true);
  series.Add(NaN);
  check(series.Sample, 8);
  check(series.FPMin(1.5, 2), 1.5);
  check(series.FPMax(1.5, 2), 2);
  series.Reset();
  check(series.Sum, 0);
});

test("DirectoriesAreListed", function () {
  var folder = temporaryName();
  files.CreateFolder(folder);
  files.CreateFolder(folder + "\\sub");
  files.CreateTextFile(folder + "\\b.csv").Close();
  files.CreateTextFile(folder + "\\A.txt").Close();
  var directory = new ActiveXObject("pvItems32.CDirectory");
  check(listOf(directory.GetFileList(folder), "DirType"), "1,0,0");
  check(listOf(directory, "Path"),
        [folder + "\\sub", folder + "\\A.txt", folder + "\\b.csv"].join(","));
  check(directory.GetFileList(folder, "?.t*").Count, 2);
  files.DeleteFolder(folder);
  check(directory.GetFileList(folder).Count, 0);
  directory.Add("C:\\x", 1, "key");
  check(directory("KEY").DirType, 1);
  checkError(457, function () { directory.Add("C:\\y", 0, "Key"); }, "Add");
  checkError(5, function () { directory.Item("none"); }, "none");
});

test("ErrorsAreLogged", function () {
  var errors = new ActiveXObject("pvItems32.Cerrors");
  var day = 45429.5;  // days since 1899-12-30, as automation dates are
  errors.Add(10, "first", day);
  var tag = { name: "mine" };
  check(errors.Add(20, "second", day, tag).Tag.name, "mine");
  errors.Add(30, "third", day);
  check(errors(1).Tag, undefined);
  errors.Remove(2);
  check(listOf(errors, "Index"), "1,2");
  check(listOf(errors, "Number"), "10,30");
  errors.Clear();
  errors.Clear();
  check(errors.Count, 0);
  checkError(9, function () { errors.Remove(1); }, "Remove");
  checkError(94, function () { errors.Add(null, "x", day); }, "Add");
});

test("PasswordsAreSavedAndLoaded", function () {
  var store = new ActiveXObject("pvItems32.CPasswords");
  store.Add("one", "one");
  store.Add("two", "");
  check(store(2).Status(), false);
  var text = store.Save();
  check(text.substr(0, 2), "2|");
  check(new ActiveXObject("pvItems32.CPasswords").Load(text), 2);
  check(store.Load("0|"), 0);
  check(store.Count, 0);
  check(store.Edit(1), false);
  check(store.Encode64("\x01\x02\x03"), "BIwA");
  check(store.Decode64(store.Encode64("any text")), "any text");
});

test("PasswordErrorsHaveTheirNumbers", function () {
  var store = new ActiveXObject("pvItems32.CPasswords");
  checkError(13, function () { store.Load(""); }, "Load");
  checkError(9, function () { store.Load("1|"); }, "Load");
  checkError(9, function () { store.Status(); }, "Status");
  checkError(5, function () { store.Item("x"); }, "x");
});

WScript.Echo("DONE");

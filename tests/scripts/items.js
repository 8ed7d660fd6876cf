// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Items, variables, versions and display lists as a JScript host sees them.

suite = "ItemsJs";

function loadedItems() {
  var items = new ActiveXObject("pvItems32.CItems");
  check(items.LoadSettingsNew(exampleData + "fluxor.itm"), true);
  check(items.Versions.LoadSettingsNew(exampleData + "fluxor.ver"), true);
  return items;
}

function madeVariables(keys) {
  var variables = new ActiveXObject("pvItems32.CVariables");
  for (var i = 0; i < keys.length; i += 1) {
    variables.Add(keys[i], "Caption " + keys[i], "", "", 0, 1, 1, 2, 0, 0, 4);
  }
  return variables;
}

function keysOf(collection) {
  var keys = [];
  for (var members = new Enumerator(collection); !members.atEnd(); members.moveNext()) {
    keys.push(members.item().Key);
  }
  return keys.join(",");
}

test("SettingsFilesLoad", function () {
  var items = loadedItems();
  check(items.AllItemCount, 66);
  check(items.Count, 54);
  check(items.Changed, false);
  check(items.LoadSettingsNew(exampleData + "missing.itm"), false);
  check(items.AllItemCount, 66);
});

test("SettingsFilesComeBackAsSaved", function () {
  var items = loadedItems(), reloaded = new ActiveXObject("pvItems32.CItems");
  var name = files.GetSpecialFolder(2) + "\\" + files.GetTempName();
  check(items.SaveSettingsNew(name), true);
  check(reloaded.LoadSettingsNew(name), true);
  files.DeleteFile(name);
  check(keysOf(reloaded), keysOf(items));
});

test("EnumeratorGoesOverTheMembers", function () {
  check(keysOf(madeVariables(["b", "", "a"])), "b,,a");
  check(keysOf(madeVariables([])), "");
  check(keysOf(loadedItems()).split(",").length, 66);
  var variables = madeVariables(["a", "b"]);
  var members = new Enumerator(variables);
  variables.Clear();
  check(members.item().Key, "a");
  members.moveNext();
  check(members.item().Key, "b");
  members.moveNext();
  check(members.atEnd(), true);
});

test("DefaultMembersTakePositionsAndKeys", function () {
  var items = loadedItems();
  check(items("1").Caption(1), "Volume flow");
  check(items(1).Caption(1), "Volume flow");
  check(items.Item("1").Variables("1").Caption, "Volume flow");
  check(items.Versions("2.30").ItemCount, 64);
  check(items.Versions(1).VerItems("32").IndexKey, "160");
});

test("NumericTextIsAKey", function () {
  var variables = madeVariables(["2", "1"]);
  check(variables("1").Caption, "Caption 1");
  check(variables(1).Caption, "Caption 2");
  check(variables(4 / 2).Caption, "Caption 1");
  check(variables.Item("1").Key, "1");
});

test("KeysIgnoreCase", function () {
  var variables = madeVariables(["Flow", "\u0150SZ"]);
  check(variables("FLOW").Key, "Flow");
  check(variables("\u0151sz").Key, "\u0150SZ");
});

test("ItemsReadTheirVariables", function () {
  var items = new ActiveXObject("pvItems32.CItems");
  var item = items.Add("k", 7, true, 1, false, false, 1.5, 4, madeVariables(["1", "2"]));
  check(item.SmartWait, 1.5);
  check(item.Caption(1), "Caption 1");
  check(item.Caption(2), "Caption 2");
  check(item.Caption(3), "Caption 1");
  item.Variables(2).Value = "text";
  check(item.Value(2), "text");
  item.Access = 26;
  check(items("K").Access, 26);
});

test("VersionsSelectTheItems", function () {
  var items = loadedItems();
  items.Version = "1.10";
  check(items("32").ItemID, 160);
  check(items("6"), null);
  items.Version = "9.99";
  check(items.Count, 54);
  check(items("32"), null);
});

test("WhatItemsDoNotHaveIsNull", function () {
  var items = loadedItems();
  check(items("no such key"), null);
  check(items(67), null);
  check(items(undefined), null);
  check(items(null), null);
  check(items.Add("1", 1, true, 1, false, false, 0.5, 4), null);
});

test("ErrorsHaveNumberAndMessage", function () {
  var variables = madeVariables(["a"]);
  checkError(9, function () { variables.Item(9); }, "9");
  checkError(5, function () { variables.Item("unknown"); }, "unknown");
  checkError(457, function () { variables.Add("A", "", "", "", 0, 1, 1, 2, 0, 0, 4); }, "Add");
  checkError(9, function () { variables.Remove(2); }, "Remove");
  checkError(94, function () { variables.Item(null); }, "Null");
  checkError(91, function () { new ActiveXObject("pvItems32.CVerItem").Copy(null); }, "Copy");
  check(variables.Count, 1);
});

test("ListsFillAControl", function () {
  var lists = new ActiveXObject("pvItems32.CDLists");
  check(lists.LoadSettingsNew(exampleData + "fluxor.lst"), true);
  var control = {
    texts: ["old"],
    Clear: function () { this.texts = []; },
    AddItem: function (text) { this.texts.push(text); }
  };
  check(lists.FillList(2, control), true);
  check(control.texts.join(","), "Off,On");
  check(lists.FillList(99, control), false);
  check(control.texts.length, 0);
  check(lists.FillList(2, {}), false);
  check(lists.FillList(2, { Clear: function () {} }), false);
  check(lists.FillList(2, { Clear: function () { throw new Error(5, "no"); }, AddItem: function () {} }), false);
  check(lists.FillList(2, null), false);
});

test("ControlMayChangeTheListsWhileItIsFilled", function () {
  var lists = new ActiveXObject("pvItems32.CDLists");
  lists.LoadSettingsNew(exampleData + "fluxor.lst");
  var texts = [];
  var control = {
    Clear: function () {},
    AddItem: function (text) {
      lists.Clear();
      texts.push(text);
    }
  };
  check(lists.FillList(2, control), true);
  check(texts.join(","), "Off,On");
  check(lists.Count, 0);
});

test("RecordsLoadAndSave", function () {
  var variable = new ActiveXObject("pvItems32.CVariable");
  check(variable.Load("1|Flow|Text|0|11|4|2||0|4|PUMP|"), true);
  check(variable.Save(), "1|Flow|Text|0|11|4|2||0|4|PUMP|");
  check(variable.Load(null), false);
  check(variable.Caption, "Flow");
});

WScript.Echo("DONE");

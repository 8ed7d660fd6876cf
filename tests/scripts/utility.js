// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Units, utilities, languages and window positions as a JScript host sees them.

suite = "UtilityJs";

var utility = new ActiveXObject("pvItems32.CUtility");

function flowTable() {
  var units = new ActiveXObject("pvItems32.CUnits");
  units.Add("m3/h", "m3/h", 3.6, 0);
  units.Add("l/s", "l/s", 1, 0);
  var dimensions = new ActiveXObject("pvItems32.CDimensions");
  dimensions.Add("Flow", "Flow", units);
  return dimensions;
}

test("ConversionsTakeAnyValue", function () {
  check(utility.pvCInt("2,5"), 2);
  check(utility.pvCInt(3.5), 4);
  check(utility.pvCByte(300), 0);
  check(utility.pvCDbl("1,25"), 1.25);
  check(utility.pvCDbl(undefined), 0);
  check(utility.pvCDbl(null), 0);
  check(utility.pvCBool("1"), true);
  check(utility.pvCStr("text"), "text");
  check(utility.pvTrim("  a b c "), "  abc");
});

test("ErrorsHaveTheirNumbers", function () {
  checkError(94, function () { utility.pvCStr(null); });
  checkError(6, function () { utility.pvCSng("1e39"); });
  checkError(9, function () { utility.AppDirectory(21); });
  checkError(5, function () { utility.Languages.Item("us"); });
});

test("ApplicationIsAnObjectOfTheScript", function () {
  var info = { Title: "Kalvos", Major: 2, Minor: 5, Revision: 7 };
  check(utility.AppVersion(info), "2.05.07");
  utility.Application = info;
  check(utility.Application.Title, "Kalvos");
  checkError(13, function () { utility.Application = { Title: "Kalvos" }; });
  check(utility.Application.Title, "Kalvos");
  utility.Application = null;
  check(utility.Application, null);
});

test("WindowPositionsAreKept", function () {
  var name = temporaryName();
  var form = { Left: 120, Top: 240, Width: 4800, Height: 3600, WindowState: 2, BorderStyle: 2 };
  check(utility.SaveWindowPos(form, name, "Main"), true);
  check(form.WindowState, 0);
  check(utility.pvGetSetting(name, "Main", "Window", ""), "120|240|4800|3600|2|");
  var other = { Left: 0, Top: 0, Width: 0, Height: 0, WindowState: 0, BorderStyle: 2 };
  check(utility.RestoreWindowPos(other, name, "Main"), true);
  check(other.Left, 120);
  check(other.Top, 240);
  check(other.Width, 4800);
  check(other.Height, 3600);
  check(other.WindowState, 2);
  var fixed = { Left: 0, Top: 0, Width: 1, Height: 1, WindowState: 0, BorderStyle: 1 };
  check(utility.RestoreWindowPos(fixed, name, "Main", "Window"), true);
  check(fixed.Left, 120);
  check(fixed.Width, 1);
  check(utility.RestoreWindowPos(fixed, name, "Other"), false);
  files.DeleteFile(name);
});

test("ValuesAreShownInUnits", function () {
  var dimensions = flowTable();
  check(dimensions.ToUnit(10, 1, 1), "36");
  check(dimensions.ToUnit(10, "flow", "l/s", 0, 2), "10 l/s");
  check(dimensions.ToUnit(10, 1, 1, 12).length, 11);
  check(dimensions.ToUnit(10, 1, 1, -1, 0, true), "?");
  check(dimensions.ToUnit(10, 2, 1), "");
  check(dimensions.ToBase(36, 1, 1), 10);
  check(dimensions.ToBase(36, 2, 1), undefined);
});

test("SettingsFilesAreWrittenAndRead", function () {
  var name = temporaryName();
  check(flowTable().SaveSettingsNew(name), true);
  var dimensions = new ActiveXObject("pvItems32.CDimensions");
  check(dimensions.LoadSettingsNew(name), true);
  check(dimensions.List(), "Flow|");
  check(dimensions.Item(1).Units.List(), "m3/h|l/s|");
  check(dimensions.Item("Flow").Units.Item(1).Slope, 3.6);
  check(dimensions.ChangeTitle(1, "Volume flow"), true);
  check(dimensions.List(), "Volume flow|");
  files.DeleteFile(name);
  check(dimensions.LoadSettingsNew(name), false);
  check(dimensions.Count, 1);
});

test("CollectionsAreVisited", function () {
  var extensions = "";
  for (var all = new Enumerator(utility.Languages); !all.atEnd(); all.moveNext()) {
    extensions += all.item().Extension + ";";
  }
  check(extensions, "us;hu;ger;ita;fra;nl;");
});

test("TextsFollowTheLanguage", function () {
  utility.Languages.ActiveLanguageID = 5;
  check(utility.pvString(205), "Oui");
  utility.Languages.ActiveLanguageID = 6;
  check(utility.pvString(510), "Enable Read:");
  utility.Languages.ActiveLanguageID = 1;
  check(utility.pvString(205), "Yes");
  check(utility.pvString(250), "?");
});

test("FileNamesAreTakenApart", function () {
  var file = new ActiveXObject("pvItems32.CFile");
  file.FullName = "C:\\data\\report.2024.csv";
  check(file.Drive, "C");
  check(file.Path, "\\data");
  check(file.Name, "report");
  check(file.Extension, "csv");
  check(file.FileTitle(), "report.csv");
  check(file.MakeFullName(), "C:\\data\\report.csv");
});

WScript.Echo("DONE");

// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Documents a transmitter: loads its settings files through pvItems32 and prints its items.
//
//   cscript //nologo document.js <data folder> <version name> <language index>
//
// One row per variable: item, name, value (or its meaning), unit, the same value in another unit, and
// the password levels needed to read and write. Ends with DONE; anything wrong ends it with exit code 1.

// Scripts see no constants of a type library, so those in use are named here.
var FOR_READING = 1;
var SHOW_VALUE_ONLY = 0, SHOW_UNIT_ONLY = 1, SHOW_VALUE_AND_UNIT = 2;
var DIMENSION_NONE = 17;
var LAST_NUMERIC_TYPE = 4;
var ACCESS_UPDATE = 64, ACCESS_MASK = 128;

var TEXT_ITEM_ID = 316, TEXT_ITEM_NAME = 317, TEXT_UNIT = 319;
var TEXT_ENABLE_READ = 510, TEXT_ENABLE_WRITE = 511, TEXT_UPDATE = 512, TEXT_MASK = 513;
var TEXT_ALWAYS = 520;

var WIDTHS = [9, 25, 22, 9, 22, 8];

// The host's own headings by language index; everything else comes from the library.
var OWN_WORDS = [
  ["Value", "Other unit", "Access"],
  ["\u00c9rt\u00e9k", "M\u00e1s egys\u00e9g", "Hozz\u00e1f\u00e9r\u00e9s"],
  ["Wert", "Andere Einheit", "Zugriff"],
  ["Valore", "Altra unit\u00e0", "Accesso"],
  ["Valeur", "Autre unit\u00e9", "Acc\u00e8s"],
  ["Waarde", "Andere eenheid", "Toegang"]
];

var files, utility, items, dimensions, lists;

var failure = null;
try {
  main();
} catch (e) {
  failure = typeof e == "string" ? e : "Error " + (e.number & 0xffff) + ": " + e.message;
}
WScript.Echo(failure === null ? "DONE" : failure);
if (failure !== null) WScript.Quit(1);

function main() {
  var args = WScript.Arguments;
  if (args.length != 3) throw "Usage: document.js <data folder> <version name> <language index>";
  var folder = args.Item(0);

  files = new ActiveXObject("Scripting.FileSystemObject");
  utility = new ActiveXObject("pvItems32.CUtility");
  items = new ActiveXObject("pvItems32.CItems");
  dimensions = new ActiveXObject("pvItems32.CDimensions");
  lists = new ActiveXObject("pvItems32.CDLists");

  selectLanguage(args.Item(2));
  load(dimensions, folder, "fluxor.dim");
  load(lists, folder, "fluxor.lst");
  load(items, folder, "fluxor.itm");
  load(items.Versions, folder, "fluxor.ver");
  readValues(folder, "fluxor.val");
  selectVersion(args.Item(1));

  printItems();
  printAccessLegend();
}

function forEach(collection, visit) {
  for (var e = new Enumerator(collection); !e.atEnd(); e.moveNext()) visit(e.item());
}

// --- Loading -----------------------------------------------------------------------------------------

function selectLanguage(text) {
  var index = utility.pvCInt(text);
  var known = utility.Languages.Count;
  if (index < 1 || index > known) throw "There is no language " + text + ": choose 1 to " + known + ".";
  utility.Languages.ActiveLanguageID = index;
}

function existingPath(folder, name) {
  var path = files.BuildPath(folder, name);
  if (!files.FileExists(path)) throw "There is no file " + path + ".";
  return path;
}

// `table` is any of the four collections that read themselves from a settings file.
function load(table, folder, name) {
  var path = existingPath(folder, name);
  if (!table.LoadSettingsNew(path)) throw "Cannot load " + path + ".";
}

function selectVersion(name) {
  if (items.Versions.Item(name) === null) {
    var known = "";
    forEach(items.Versions, function(version) { known += " " + version.Name; });
    throw "There is no software version " + name + ": choose one of" + known + ".";
  }
  items.Version = name;
}

// Lines of item key|variable|raw value. A variable without a line stays unknown.
function readValues(folder, name) {
  var path = existingPath(folder, name);
  forEach(items, function(item) {
    forEach(item.Variables, function(variable) { variable.Dirty = true; });
  });
  var stream = files.OpenTextFile(path, FOR_READING);
  while (!stream.AtEndOfStream) {
    var fields = stream.ReadLine().split("|");
    var item = items.Item(fields[0]);
    if (item === null) throw path + " names an unknown item: " + fields[0];
    storeValue(item.Variables.Item(utility.pvCInt(fields[1])), fields[2]);
  }
  stream.Close();
}

function storeValue(variable, text) {
  var isNumber = variable.DataType <= LAST_NUMERIC_TYPE && variable.ListID == 0;
  variable.Value = isNumber ? utility.pvCDbl(text) : text;
  variable.Dirty = false;
}

// --- Printing ----------------------------------------------------------------------------------------

function printItems() {
  var language = utility.Languages.ActiveLanguage;
  var words = OWN_WORDS[utility.Languages.ActiveLanguageID - 1];
  WScript.Echo("Software version " + items.Version + ": " + items.Count + " of " + items.AllItemCount +
               " items, " + language.Name);
  WScript.Echo("");
  printRow([utility.pvString(TEXT_ITEM_ID), utility.pvString(TEXT_ITEM_NAME), words[0],
            utility.pvString(TEXT_UNIT), words[1], words[2]]);
  var lines = [];
  for (var i = 0; i < WIDTHS.length; i++) lines.push(repeat("-", WIDTHS[i]));
  printRow(lines);

  var printed = 0;
  forEach(items.Versions.Item(items.Version).VerItems, function(entry) {
    var item = items.Item(entry.Key);
    if (item === null) throw "Item " + entry.Key + " has no item " + entry.IndexKey + " behind it.";
    for (var index = 1; index <= item.Variables.Count; index++) printVariable(entry, item, index);
    printed++;
  });
  if (printed != items.Count) {
    throw "The version has " + items.Count + " items, but " + printed + " were printed.";
  }
}

function printVariable(entry, item, index) {
  var variable = item.Variables.Item(index);
  var id = entry.Key;
  if (index > 1) id += "." + index;
  else if (item.Key != entry.Key) id += " > " + item.Key;
  printRow([id, variable.Caption, valueText(item, variable), unitText(variable),
            otherUnitText(variable), index == 1 ? accessText(item.Access) : ""]);
}

function printRow(cells) {
  var row = "";
  for (var i = 0; i < WIDTHS.length - 1; i++) row += fit(cells[i], WIDTHS[i]) + " ";
  WScript.Echo(row + cells[WIDTHS.length - 1]);
}

function fit(text, width) {
  if (text.length > width) return text.substring(0, width - 2) + "..";
  return text + repeat(" ", width - text.length);
}

function repeat(text, count) {
  return new Array(count + 1).join(text);
}

// Physical values have units; enumerated values and plain texts have none.
function isPhysical(variable) {
  return variable.ListID == 0 && variable.DimensionID != DIMENSION_NONE;
}

function shown(variable, unit, decimals, mode) {
  return dimensions.ToUnit(variable.Value, variable.DimensionID, unit, decimals, mode, variable.Dirty);
}

function valueText(item, variable) {
  if (item.Access & ACCESS_MASK) return repeat("*", 8);
  if (variable.Dirty) return utility.ecomDIRTY;
  if (variable.ListID > 0) return meaningOf(variable);
  if (isPhysical(variable)) return shown(variable, variable.UnitID, variable.Decimals, SHOW_VALUE_ONLY);
  return utility.pvCStr(variable.Value);
}

// A raw value that its list does not know is shown as it is.
function meaningOf(variable) {
  var list = lists.Item(variable.ListID);
  var member = list === null ? null : list.ListMembers.Item(utility.pvCStr(variable.Value));
  return member === null ? utility.pvCStr(variable.Value) : member.Caption;
}

function unitText(variable) {
  return isPhysical(variable) ? shown(variable, variable.UnitID, -1, SHOW_UNIT_ONLY) : "";
}

// The same value in the dimension's next unit, with two decimals more than in its own.
function otherUnitText(variable) {
  if (!isPhysical(variable)) return "";
  var count = dimensions.Item(variable.DimensionID).Units.Count;
  if (count < 2) return "";
  return shown(variable, variable.UnitID % count + 1, variable.Decimals + 2, SHOW_VALUE_AND_UNIT);
}

function accessText(access) {
  return "R" + ((access & 56) >> 3) + " W" + (access & 7) + (access & ACCESS_UPDATE ? " U" : "") +
         (access & ACCESS_MASK ? " *" : "");
}

function printAccessLegend() {
  WScript.Echo("");
  WScript.Echo("R  " + utility.pvString(TEXT_ENABLE_READ) + "   W  " + utility.pvString(TEXT_ENABLE_WRITE));
  for (var level = 0; level <= 4; level++) {
    WScript.Echo(level + "  " + utility.pvString(TEXT_ALWAYS + level));
  }
  WScript.Echo("U  " + utility.pvString(TEXT_UPDATE));
  WScript.Echo("*  " + utility.pvString(TEXT_MASK));
}

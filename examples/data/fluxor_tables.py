# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

"""The Fluxor flow transmitter in readable tables: dimensions, display lists, items and versions.

make_data.py writes the settings files from these tables. Factors are exact fractions, values are
in the base unit of their dimension (the unit with slope 1 and offset 0).
"""

from dataclasses import dataclass
from fractions import Fraction as F

# Exact definitions of the customary units, in SI units.
INCH = F("0.0254")  # m
FOOT = 12 * INCH
POUND = F("0.45359237")  # kg
US_GALLON = F("3.785411784")  # l
PSI = POUND * F("9.80665") / INCH**2  # Pa
PI = F("3.14159265358979323846264338327950288")

# Dimension caption -> units as (caption, slope, offset): unit value = base value * slope + offset.
# The order of dimensions and units is their number: the first has the ID 1.
DIMENSIONS = {
    "Percentage": [("%", 1, 0), ("1/1", F("0.01"), 0), ("ppm", 10000, 0)],
    "Phase": [("°", 1, 0), ("rad", PI / 180, 0), ("mrad", PI / 180 * 1000, 0), ("gon", F(10, 9), 0)],
    "Mass flow": [
        ("kg/s", 1, 0), ("kg/min", 60, 0), ("kg/h", 3600, 0), ("t/h", F("3.6"), 0),
        ("g/s", 1000, 0), ("lb/min", 60 / POUND, 0), ("lb/h", 3600 / POUND, 0),
    ],
    "Current": [("mA", 1, 0), ("A", F("0.001"), 0), ("µA", 1000, 0)],
    "Frequency": [("Hz", 1, 0), ("kHz", F("0.001"), 0), ("1/min", 60, 0)],
    "Temperature": [
        ("°C", 1, 0), ("K", 1, F("273.15")), ("°F", F("1.8"), 32), ("°R", F("1.8"), F("491.67")),
    ],
    "Density": [
        ("kg/m3", 1, 0), ("g/cm3", F("0.001"), 0), ("kg/l", F("0.001"), 0), ("g/l", 1, 0),
        ("lb/ft3", FOOT**3 / POUND, 0), ("lb/gal", US_GALLON / 1000 / POUND, 0),
    ],
    "Mass": [
        ("kg", 1, 0), ("t", F("0.001"), 0), ("lb", 1 / POUND, 0), ("g", 1000, 0), ("oz", 16 / POUND, 0),
    ],
    "No dimension": [("-", 1, 0)],
    "Volume": [
        ("m3", 1, 0), ("l", 1000, 0), ("hl", 10, 0), ("gal", 1000 / US_GALLON, 0),
        ("ft3", 1 / FOOT**3, 0), ("bbl", 1000 / (42 * US_GALLON), 0),
    ],
    "Volumetric flow": [
        ("l/s", 1, 0), ("l/min", 60, 0), ("l/h", 3600, 0), ("m3/h", F("3.6"), 0),
        ("gal/min", 60 / US_GALLON, 0), ("ft3/min", F("0.06") / FOOT**3, 0), ("m3/s", F("0.001"), 0),
    ],
    "Wait time": [("s", 1, 0), ("ms", 1000, 0)],
    "Voltage": [("V", 1, 0), ("mV", 1000, 0)],
    "AD code": [("digit", 1, 0), ("kdigit", F("0.001"), 0)],
    "Time": [("h", 1, 0), ("min", 60, 0), ("s", 3600, 0), ("d", F(1, 24), 0)],
    "Resistance": [("Ohm", 1, 0), ("kOhm", F("0.001"), 0)],
    "None": [("none", 1, 0)],
    "Baud": [("Bd", 1, 0), ("kBd", F("0.001"), 0)],
    "Time-out": [("ms", 1, 0), ("s", F("0.001"), 0)],
    "Pressure": [
        ("bar", 1, 0), ("kPa", 100, 0), ("mbar", 1000, 0), ("Pa", 100000, 0), ("MPa", F("0.1"), 0),
        ("psi", 100000 / PSI, 0), ("atm", 100000 / F(101325), 0),
    ],
    "Velocity": [
        ("m/s", 1, 0), ("cm/s", 100, 0), ("km/h", F("3.6"), 0), ("ft/s", 1 / FOOT, 0), ("ft/min", 60 / FOOT, 0),
    ],
    "Battery": [("V", 1, 0), ("mV", 1000, 0)],
}

ERROR_TEXTS = """No error
Program memory check failed
Working memory check failed
Parameter memory check failed
Parameter memory worn out
Watchdog restart
Supply voltage too low
Supply voltage too high
Internal voltage out of range
Electronics too warm
Electronics too cold
AD converter A does not answer
AD converter B does not answer
Clock battery low
Clock not set
Display does not answer
Sensor not connected
Sensor coil A open
Sensor coil B open
Sensor coil A shorted
Sensor coil B shorted
Exciter current too high
Exciter coil open
Tube does not oscillate
Tube frequency too low
Tube frequency too high
Oscillation not stable
Zero adjustment failed
Zero adjustment out of limits
Temperature sensor open
Temperature sensor shorted
Temperature too low
Temperature too high
Pressure sensor not connected
Pressure too low
Pressure too high
Pipe empty
Pipe partly filled
Gas in the liquid
Density too low
Density too high
Flow too high
Flow in wrong direction
Flow alarm low
Flow alarm high
Density alarm low
Density alarm high
Volume total overflow
Mass total overflow
Batch aborted
Batch preset exceeded
Current output 1 saturated
Current output 2 saturated
Current output 1 open
Current output 2 open
Pulse output too fast
Calibration factor out of limits
Nominal diameter unknown
Medium table damaged
Parameter set not complete
Command unknown
Item unknown
Value out of limits
Password wrong
Checksum wrong"""

# List caption -> members as (raw value, caption, tag). A tag of None means: the raw value.
LISTS = {
    "ERROR_TEXT": [(n, text, None) for n, text in enumerate(ERROR_TEXTS.splitlines())],
    "OFF_ON": [(0, "Off", None), (1, "On", None)],
    "FLOW_DIRECTION": [(0, "Forward", None), (1, "Reverse", None), (2, "Both directions", None)],
    # The tag of a selector list is the ID of the item that carries the dimension.
    "TOTAL_SOURCE": [(0, "Mass", "22"), (1, "Volume", "21")],
    # The raw value of an output assignment is the ID of the item that is put out.
    "OUTPUT_ASSIGNMENT": [
        (0, "Switched off", None), (1, "Volume flow", None), (2, "Mass flow", None),
        (3, "Density", None), (4, "Temperature", None), (6, "Flow velocity", None),
    ],
    "BAUD_RATE": [
        (0, "1200 Bd", "1200"), (1, "2400 Bd", "2400"), (2, "4800 Bd", "4800"),
        (3, "9600 Bd", "9600"), (4, "19200 Bd", "19200"),
    ],
    "PARITY": [(0, "None", "n"), (1, "Odd", "o"), (2, "Even", "e")],
    "DISPLAY_LANGUAGE": [
        (1, "English", "us"), (2, "Hungarian", "hu"), (3, "German", "ger"),
        (4, "Italian", "ita"), (5, "French", "fra"), (6, "Dutch", "nl"),
    ],
    "FAILURE_MODE": [(0, "Hold last value", None), (1, "3.6 mA", None), (2, "21.5 mA", None)],
    "DEVICE_STATE": [
        (0, "Starting", None), (1, "Measuring", None), (2, "Measuring, warning", None),
        (3, "Failure", None), (4, "Simulation", None),
    ],
    "MEDIUM": [
        (0, "Water", None), (1, "Milk", None), (2, "Beer", None), (3, "Light oil", None),
        (4, "Heavy oil", None), (5, "User defined", None),
    ],
    "PASSWORD_LEVEL": [
        (0, "No password", None), (1, "PW1, operator", None), (2, "PW2, technician", None),
        (3, "PW3, calibration", None), (4, "PW4, service", None),
    ],
}

# Wire data types: (number, characters of one variable on the wire).
BIT, BYTE, INTEGER, FLOAT = (1, 2), (2, 2), (3, 4), (4, 8)
STRING6, STRING8, STRING9, STRING14 = (8, 6), (5, 8), (18, 9), (7, 14)
STRING16, STRING32, PACKED = (10, 16), (15, 32), (16, 7)
APP80, APP100, APP120, APP150 = (11, 80), (12, 100), (20, 120), (21, 150)
REC_ANALOG, REC_ERROR, REC_ALARM, REC_PASSWORD = (6, 4), (9, 2), (13, 2), (14, 8)
REC_ERROR_HISTORY, BYTE_ERROR = (17, 7), (19, 2)


@dataclass(frozen=True)
class Variable:
    caption: str
    description: str
    data_type: tuple
    value: object = None  # raw value for the values file; None = never read
    dimension: str = "None"  # "" = selector: the dimension is chosen by the item's value
    unit: str = ""  # empty = the first unit of the dimension
    decimals: int = 0
    list: str = ""
    parent: int = 0  # > 0: item that carries the dimension; < 0: sibling variable that names it


@dataclass(frozen=True)
class Item:
    id: int
    kind: dict
    variables: tuple


def access(read, write, update=False, mask=False):
    return read * 8 + write + 64 * update + 128 * mask


def kind(read, write, historian=False, restore=False, wait="0.5", **flags):
    return dict(access=access(read, write, **flags), historian=historian, restore=restore, wait=wait)


MEASURED = kind(0, 4)
DIAGNOSTIC = kind(1, 4)
RAW = kind(2, 4)
TOTAL = kind(0, 3, historian=True, wait="1")
OPERATION = kind(0, 1, historian=True, restore=True)
SETTING = kind(0, 2, historian=True, restore=True, wait="1")
CALIBRATION = kind(3, 3, historian=True, restore=True, wait="2.5")
COMMUNICATION = kind(0, 2, restore=True, wait="2")
FREE = kind(0, 0, wait="0.25")
IDENTITY = kind(0, 4, wait="0.25")
NAME = kind(0, 1, historian=True, restore=True, wait="0.25")
PASSWORD_ENTRY = kind(0, 0, wait="1.5", update=True, mask=True)
PASSWORD_CHANGE = kind(4, 4, wait="1.5", mask=True)


def item(number, item_kind, *variables):
    return Item(number, item_kind, tuple(variables))


var = Variable


def output_record(number, assigned, low, high, time):
    """A current output: the assignment is an item ID, and both range ends follow that item."""
    return item(
        number, SETTING,
        var(f"Output {number - 69} assignment", "Measured value that the current output shows",
            REC_ANALOG, assigned, list="OUTPUT_ASSIGNMENT"),
        var(f"Output {number - 69} at 4 mA", "Measured value at 4 mA", FLOAT, low, decimals=2, parent=-1),
        var(f"Output {number - 69} at 20 mA", "Measured value at 20 mA", FLOAT, high, decimals=2, parent=-1),
        var(f"Output {number - 69} damping", "Time constant of the current output", FLOAT, time,
            "Wait time", "s", 1),
    )


def alarm_record(number, name, parent, low, high, hysteresis):
    return item(
        number, SETTING,
        var(f"{name} alarm", f"Switches the {name.lower()} alarm", REC_ALARM, 1, list="OFF_ON"),
        var(f"{name} alarm low", "Alarm below this value", FLOAT, low, decimals=2, parent=parent),
        var(f"{name} alarm high", "Alarm above this value", FLOAT, high, decimals=2, parent=parent),
        var(f"{name} alarm hysteresis", "Return difference in per cent of the limit", FLOAT, hysteresis,
            "Percentage", "%", 1),
    )


ITEMS = [
    # Measured values
    item(1, MEASURED, var("Volume flow", "Momentary volume flow through the sensor", FLOAT, "3.5", "Volumetric flow", "m3/h", 2)),
    item(2, MEASURED, var("Mass flow", "Momentary mass flow through the sensor", FLOAT, "3.4937", "Mass flow", "kg/h", 1)),
    item(3, MEASURED, var("Density", "Density of the liquid in the tube", FLOAT, "998.2", "Density", "kg/m3", 1)),
    item(4, MEASURED, var("Temperature", "Temperature of the liquid", FLOAT, "20", "Temperature", "°C", 1)),
    item(5, MEASURED, var("Pressure", "Line pressure before the sensor", FLOAT, "2.4", "Pressure", "bar", 2)),
    item(6, MEASURED, var("Flow velocity", "Mean velocity in the nominal diameter", FLOAT, "1.7825", "Velocity", "m/s", 3)),
    item(7, MEASURED, var("Relative flow", "Volume flow in per cent of the full scale flow", FLOAT, "63", "Percentage", "%", 1)),
    item(8, MEASURED, var("Device state", "What the transmitter is doing", BYTE, 2, list="DEVICE_STATE")),
    # Totals
    item(20, SETTING, var("Total source", "Quantity that the batch counter counts", BYTE, 1, "", list="TOTAL_SOURCE")),
    item(21, TOTAL, var("Volume total", "Volume since the last reset", FLOAT, "18342.75", "Volume", "m3", 2)),
    item(22, TOTAL, var("Mass total", "Mass since the last reset", FLOAT, "18309733", "Mass", "t", 2)),
    item(23, MEASURED, var("Batch total", "Quantity of the running batch", FLOAT, "0.75", decimals=3, parent=20)),
    item(24, OPERATION, var("Batch preset", "Quantity at which the batch ends", FLOAT, "1.2", decimals=3, parent=20)),
    item(25, OPERATION, var("Total reset", "Sets both totals to zero when switched on", BIT, 0, list="OFF_ON")),
    # Measuring
    item(30, SETTING, var("Full scale flow", "Flow that counts as 100 per cent", FLOAT, "5.55555555555556", decimals=2, parent=1)),
    item(31, SETTING, var("Low flow cut-off", "Flow below this value counts as zero", FLOAT, "0.05", decimals=3, parent=1)),
    item(32, OPERATION, var("Flow damping", "Time constant of the measured flow", FLOAT, "2.5", "Wait time", "s", 1)),
    item(33, SETTING, var("Measured direction", "Flow direction that is measured", BYTE, 0, list="FLOW_DIRECTION")),
    item(34, CALIBRATION, var("Nominal diameter", "Nominal diameter DN of the sensor", INTEGER, 50, "No dimension")),
    item(35, CALIBRATION, var("Calibration factor", "Factor from phase shift to mass flow", FLOAT, "1.0382", "No dimension", decimals=4)),
    item(36, CALIBRATION, var("Zero phase", "Phase shift at standstill", FLOAT, "0.0125", "Phase", "mrad", 4)),
    item(37, OPERATION, var("Medium", "Liquid in the pipe", BYTE, 0, list="MEDIUM")),
    item(38, SETTING, var("Reference temperature", "Temperature that the volume is referred to", FLOAT, "15", decimals=1, parent=4)),
    # Sensor
    item(50, DIAGNOSTIC, var("Tube frequency", "Resonance frequency of the measuring tube", FLOAT, "182.46", "Frequency", "Hz", 2)),
    item(51, DIAGNOSTIC, var("Phase shift", "Phase shift between the two sensor coils", FLOAT, "0.4375", "Phase", "°", 4)),
    item(52, DIAGNOSTIC, var("Exciter current", "Current through the exciter coil", FLOAT, "38.2", "Current", "mA", 1)),
    item(53, DIAGNOSTIC,
         var("Coil A voltage", "Amplitude of the inlet sensor coil", FLOAT, "0.2481", "Voltage", "mV", 1),
         var("Coil B voltage", "Amplitude of the outlet sensor coil", FLOAT, "0.2476", "Voltage", "mV", 1)),
    item(54, RAW,
         var("AD code A", "Raw code of the inlet channel", INTEGER, 21904, "AD code"),
         var("AD code B", "Raw code of the outlet channel", INTEGER, 21860, "AD code")),
    item(55, DIAGNOSTIC, var("Pt1000 resistance", "Resistance of the temperature sensor", FLOAT, "1077.94", "Resistance", "Ohm", 2)),
    item(57, DIAGNOSTIC, var("Clock battery", "Voltage of the clock battery", FLOAT, "2.9", "Battery", "V", 2)),
    item(58, MEASURED, var("Operating time", "Hours under power", FLOAT, "8123.5", "Time", "h", 1)),
    # Outputs and alarms
    output_record(70, 1, "0", "5.55555555555556", "1"),
    output_record(71, 3, "900", "1100", "4"),
    item(72, MEASURED, var("Output 1 current", "Momentary current of output 1", FLOAT, "14.08", "Current", "mA", 2)),
    item(73, MEASURED, var("Output 2 current", "Momentary current of output 2", FLOAT, "11.856", "Current", "mA", 2)),
    item(74, SETTING, var("Failure current", "Current of both outputs in a failure", BYTE, 2, list="FAILURE_MODE")),
    item(75, MEASURED, var("Pulse frequency", "Momentary frequency of the pulse output", FLOAT, "3.5", "Frequency", "Hz", 2)),
    item(76, SETTING, var("Pulse quantity", "Quantity of one pulse", FLOAT, "0.001", decimals=4, parent=20)),
    item(77, SETTING, var("Pulse width", "Length of one pulse", FLOAT, "0.05", "Wait time", "ms")),
    alarm_record(90, "Flow", 1, "0.2", "5", "2"),
    alarm_record(91, "Density", 3, "950", "1050", "0.5"),
    # Communication and display
    item(100, COMMUNICATION, var("Bus address", "Address on the serial bus, 1 to 99", BYTE, 1)),
    item(101, COMMUNICATION, var("Baud rate", "Speed of the serial line", BYTE, 2, list="BAUD_RATE")),
    item(102, COMMUNICATION, var("Parity", "Parity of the serial line", BYTE, 0, list="PARITY")),
    item(103, COMMUNICATION, var("Modem baud rate", "Speed of the line to the modem", INTEGER, 9600, "Baud")),
    item(104, COMMUNICATION, var("Response time-out", "Longest time until an answer", INTEGER, 500, "Time-out", "ms")),
    item(105, FREE, var("Display language", "Language of the local display", BYTE, 1, list="DISPLAY_LANGUAGE")),
    # Identification
    item(110, NAME, var("Tag name", "Name of the measuring point", STRING16, "FT-1203 COOLING")),
    item(111, IDENTITY, var("Serial number", "Serial number of the transmitter", STRING9, "FX0041877")),
    item(112, IDENTITY, var("Software version", "Version of the transmitter software", STRING6, "2.30")),
    item(113, IDENTITY, var("Device type", "Type of the transmitter", STRING8, "FLUXOR")),
    item(114, IDENTITY, var("Order code", "Code under which the device was ordered", STRING14, "FX-050-PN40-A2")),
    item(115, NAME, var("Location", "Where the transmitter is mounted", STRING32, "Pump house 3, return line")),
    item(116, NAME, var("Application text", "Free text about the application", APP80, "Cooling water of the two north compressors")),
    item(117, NAME, var("Maintenance text", "Free text about the maintenance", APP100, "Check the zero point every 6 months with the valves closed")),
    item(118, NAME, var("Calibration text", "Free text about the calibration", APP120, "Calibrated with water at 20 degrees, seven points, both directions")),
    item(119, NAME, var("Service text", "Free text of the service", APP150, "Electronics replaced after water damage, parameters restored from the backup file")),
    # Errors
    item(130, MEASURED,
         var("Error state", "Number of errors that are present", REC_ERROR, 1),
         *(var(f"Errors {8 * n + 1} to {8 * n + 8}", "One bit for each error, two hexadecimal digits",
               BYTE_ERROR, "10" if n == 1 else "00") for n in range(8))),
    item(131, MEASURED, var("Last error", "Time and number of the last error", PACKED, "-\"4%E6(")),
    item(132, DIAGNOSTIC,
         *(var(f"Error history {n}", "Time and number of an earlier error", REC_ERROR_HISTORY, pack)
           for n, pack in enumerate(("-\"4%E6(", "!'3,$P0", "8%2#H(<"), start=1))),
    item(133, MEASURED, var("Last error text", "Number of the last error", BYTE, 13, list="ERROR_TEXT")),
    # Passwords: never read from the device by this example, so they have no value
    item(140, PASSWORD_ENTRY, var("Enter password", "Opens the level of the entered password", REC_PASSWORD)),
    item(141, MEASURED, var("Password level", "Level that is open on the device", BYTE, 0, list="PASSWORD_LEVEL")),
    item(142, PASSWORD_CHANGE, *(var(f"Password PW{n}", f"New password of level {n}", REC_PASSWORD) for n in range(1, 5))),
    # How older software stores two of the items above
    item(160, OPERATION, var("Flow damping (old)", "Time constant of the measured flow in whole seconds", INTEGER, 3, "Wait time", "s")),
    item(161, COMMUNICATION, var("Response time-out (old)", "Longest time until an answer, up to 255 ms", BYTE, 250, "Time-out", "ms")),
]


@dataclass(frozen=True)
class Version:
    name: str
    missing: tuple  # IDs of the items that this software does not have
    stored_as: dict  # ID of the logical item -> ID of the item that stands for it


OLD_ITEMS = {160, 161}

VERSIONS = [
    Version("1.10", (6, 57, 71, 73, 91, 103, 118, 119, 132, 142), {32: 160, 104: 161}),
    Version("2.00", (6, 103, 119), {104: 161}),
    Version("2.30", (), {}),
]

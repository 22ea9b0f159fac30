#!/usr/bin/python3
"""Samba's side of the Registry.pol interoperability test.

  samba_pol.py read FILE   prints every entry Samba's GPPolParser reads from FILE, one line
                           each: key, value name, type and data as the parser decodes them
                           (text as text, numbers as decimal, anything else as hex), tab
                           separated
  samba_pol.py write FILE  writes FILE with GPPolParser from a fixed set of entries

Exits with 77 when Samba's Python modules are not installed.
"""
import sys

try:
    from samba.dcerpc import preg
    from samba.gp_parse.gp_pol import GPPolParser
except ImportError:
    print("python3-samba is not installed")
    sys.exit(77)

# What "write" writes: key, value name, type, data as GPPolParser takes it.
WRITTEN = [
    ("Software\\Policies\\Samba", "Text", 1, "gr\u00fc\u00dfe"),
    ("Software\\Policies\\Samba", "Path", 2, "%SystemRoot%\\x"),
    ("Software\\Policies\\Samba", "Number", 4, 0x01020304),
    ("Software\\Policies\\Samba", "Bytes", 3, b"\x00\x01\xff"),
    ("Software\\Policies\\Samba", "**del.Gone", 1, " "),
    ("Software\\Policies\\Samba\\List", "**delvals.", 1, " "),
    ("Software\\Policies\\Samba\\List", "1", 1, "one"),
]


def describe(entry):
    data = entry.data
    if isinstance(data, bytes):
        text = data.hex()
    elif data is None:
        text = ""
    else:
        text = str(data)
    return "\t".join([entry.keyname, entry.valuename, str(entry.type), text])


def read(path):
    parser = GPPolParser()
    with open(path, "rb") as f:
        parser.parse(f.read())
    for entry in parser.pol_file.entries:
        print(describe(entry))


def write(path):
    pol = preg.file()
    pol.header.signature = "PReg"
    pol.header.version = 1
    entries = []
    for key, name, kind, data in WRITTEN:
        entry = preg.entry()
        entry.keyname = key
        entry.valuename = name
        entry.type = kind
        entry.data = data
        entries.append(entry)
    pol.num_entries = len(entries)
    pol.entries = entries
    parser = GPPolParser()
    parser.pol_file = pol
    parser.write_binary(path)


if __name__ == "__main__":
    {"read": read, "write": write}[sys.argv[1]](sys.argv[2])

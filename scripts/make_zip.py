#!/usr/bin/env python3
"""Writes a zip of a folder that is the same byte for byte wherever and whenever it is made.

Usage: make_zip.py FOLDER OUT.zip YEAR MONTH DAY
Every entry below FOLDER (the folder itself is the zip's top folder) goes in by sorted name, dated
YEAR-MONTH-DAY 00:00 and with fixed attributes, so only the files' bytes decide the archive's.
"""
import os
import sys
import zipfile


def entries(folder):
    top = os.path.basename(os.path.normpath(folder))
    names = [top + "/"]
    for base, dirs, files in os.walk(folder):
        rel = os.path.relpath(base, os.path.dirname(os.path.normpath(folder))).replace(os.sep, "/")
        names += [rel + "/" + d + "/" for d in dirs]
        names += [rel + "/" + f for f in files]
    return sorted(names)


def main():
    folder, out, year, month, day = sys.argv[1], sys.argv[2], *map(int, sys.argv[3:6])
    parent = os.path.dirname(os.path.normpath(folder))
    with zipfile.ZipFile(out, "w") as archive:
        for name in entries(folder):
            info = zipfile.ZipInfo(name, date_time=(year, month, day, 0, 0, 0))
            info.create_system = 0  # as Windows writes it: no Unix owner or mode bits
            if name.endswith("/"):
                info.external_attr = 0x10  # FILE_ATTRIBUTE_DIRECTORY
                archive.writestr(info, b"")
            else:
                info.external_attr = 0x20  # FILE_ATTRIBUTE_ARCHIVE
                info.compress_type = zipfile.ZIP_DEFLATED
                with open(os.path.join(parent, name), "rb") as f:
                    archive.writestr(info, f.read(), compresslevel=9)


if __name__ == "__main__":
    main()

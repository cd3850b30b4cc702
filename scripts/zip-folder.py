#!/usr/bin/env python3
"""zip-folder.py FOLDER: makes FOLDER.zip, with the same bytes for the same files: in the order of their
names, without their times, owners and permissions."""
import pathlib
import sys
import zipfile

folder = pathlib.Path(sys.argv[1])
with zipfile.ZipFile(f"{folder}.zip", "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
    for path in sorted(p for p in folder.rglob("*") if p.is_file()):
        entry = zipfile.ZipInfo(path.relative_to(folder.parent).as_posix())  # of 1980
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = 0o644 << 16
        archive.writestr(entry, path.read_bytes())

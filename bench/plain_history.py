# SPDX-License-Identifier: MIT
"""Reads a recording the plain way, line by line: plain_history.py check|csv|netcdf|png IN OUT

What veldron-history is measured against. It knows only recordings whose levels look like no line
end, and one stretch of settings.
"""
import datetime
import sys
import zlib

import numpy


def read(path):
    day, times, scans = None, [], []
    with open(path, "rb") as file:
        for line in file:
            line = line.rstrip(b"\r\n")
            if line.startswith(b"StartSettings "):
                day = datetime.date.fromisoformat(line[14:].decode())
            elif line.startswith(b"Data "):
                levels, _, time = line[5:].rpartition(b" ")
                clock = datetime.time.fromisoformat(time.decode())
                times.append(datetime.datetime.combine(day, clock))
                scans.append(numpy.frombuffer(levels, numpy.uint8))
    return times, scans


def check(times, scans, target):
    with open(target, "w") as out:
        out.write(f"{len(scans)} scans from {times[0]} to {times[-1]}\n")


def csv(times, scans, target):
    with open(target, "w") as out:
        for time, levels in zip(times, scans):
            texts = ", ".join(map(str, (levels.astype(int) - 132).tolist()))
            out.write(f"{time:%Y-%m-%d, %H:%M:%S}, 95000000, 105000000, 31250, 1, {texts}\n")


def netcdf(times, scans, target):
    import netCDF4
    with netCDF4.Dataset(target, "w") as file:
        file.createDimension("time", None)
        file.createDimension("frequency", 321)
        shape = {"zlib": True, "complevel": 1, "chunksizes": (3600, 321)}
        variable = file.createVariable("levels", "u1", ("time", "frequency"), **shape)
        variable[:] = numpy.array(scans)
        clock = file.createVariable("time", "i8", ("time",), zlib=True, complevel=1)
        clock[:] = [int((time - datetime.datetime(1970, 1, 1)).total_seconds()) for time in times]


def png(times, scans, target):
    rows = 800
    seconds = numpy.array([(time - times[0]).total_seconds() for time in times])
    picture = numpy.zeros((rows, 321), numpy.uint8)
    place = rows - 1 - (seconds * rows // (seconds[-1] + 1)).astype(int)
    numpy.maximum.at(picture, place, numpy.array(scans))
    wide = picture[:, numpy.arange(1280) * 321 // 1280]
    raw = b"".join(b"\0" + line.tobytes() for line in wide)

    def chunk(kind, data):
        body = kind + data
        return len(data).to_bytes(4, "big") + body + zlib.crc32(body).to_bytes(4, "big")

    head = (1280).to_bytes(4, "big") + rows.to_bytes(4, "big") + bytes([8, 0, 0, 0, 0])
    with open(target, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) +
                  chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b""))


globals()[sys.argv[1]](*read(sys.argv[2]), sys.argv[3])

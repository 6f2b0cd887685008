# SPDX-License-Identifier: MIT
"""Searches any number of exported recordings for their strongest signal: history-xarray.py FILE.nc...

Nothing is loaded until a result is computed, and then a chunk at a time: years need no more memory
than a day. With a Client of dask.distributed the same lines compute on a cluster.
"""
import sys

import netCDF4
import xarray

# Ten hours at a scan a second. The files' own chunks have 3600 scans.
CHUNKS = {"time": 36000}


def stretches(paths):
    """Every stretch of equal settings of all files, in their order."""
    for path in paths:
        with netCDF4.Dataset(path) as file:
            names = [name for name in file.groups if "_levels_" not in name]
        for name in names:
            yield xarray.open_dataset(path, group=name, chunks=CHUNKS)


def joined(paths):
    """The stretches that have the frequencies of the first one, as one data set."""
    parts = list(stretches(paths))
    fitting = [part for part in parts if part.frequency.equals(parts[0].frequency)]
    return xarray.concat(fitting, "time", combine_attrs="drop_conflicts")


def main(paths):
    recording = joined(paths)
    levels = recording.levels
    print(f"{levels.sizes['time']} scans of {levels.sizes['frequency']} levels in "
          f"{levels.data.npartitions} chunks")
    print(f"from {recording.time[0].dt.strftime('%F %T').item()}"
          f" to {recording.time[-1].dt.strftime('%F %T').item()}")
    strongest = levels.max("time").compute()
    print(f"strongest: {strongest.max().item():.0f} dB at"
          f" {strongest.frequency[strongest.argmax()].item():.0f} Hz")
    print(f"mean: {levels.mean().compute().item():.2f} dB")


main(sys.argv[1:])

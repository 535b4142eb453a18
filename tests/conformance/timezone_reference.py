"""Prints what Python's zoneinfo says of every zone that the system knows.

Each line has the name of a zone, and the seconds from UTC to its local time at present and a few minutes later.  The
last line is that of the machine's own zone, by the link that names it; its name is "-" if there is none.
"""
import datetime
import os
import zoneinfo

NOW = datetime.datetime.now(datetime.timezone.utc)
LATER = NOW + datetime.timedelta(minutes=10)


def offset(zone, time):
    return round(time.astimezone(zone).utcoffset().total_seconds())


for name in sorted(zoneinfo.available_timezones()):
    zone = zoneinfo.ZoneInfo(name)
    print(name, offset(zone, NOW), offset(zone, LATER))

try:
    machine = os.readlink("/etc/localtime").partition("zoneinfo/")[2] or "-"
except OSError:
    machine = "-"
own = zoneinfo.ZoneInfo(machine) if machine != "-" else datetime.timezone.utc
print(machine, offset(own, NOW), offset(own, LATER))

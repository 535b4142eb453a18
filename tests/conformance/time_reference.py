"""Prints random dates and what Python's datetime says of them.

usage: time_reference.py SEED COUNT

Each line has a time of six fields; its weekday from Monday, the number of its day in the year, and the seconds from
1970 to it; an amount of days, and the time shifted by them in the library's manner: each 1461 days are four years,
whatever those have, and the rest is exact.
"""
import datetime
import random
import sys

EPOCH = datetime.datetime(1970, 1, 1)
DAYS_PER_4_YEARS = 1461


def fields(time):
    return [time.year, time.month, time.day, time.hour, time.minute, time.second]


def shifted(time, days):
    fours = abs(days) // DAYS_PER_4_YEARS * (1 if days > 0 else -1)
    rest = days - fours * DAYS_PER_4_YEARS
    return time.replace(year=time.year + 4 * fours) + datetime.timedelta(days=rest)


def main():
    random.seed(int(sys.argv[1]))
    seconds_of_all = int((datetime.datetime.max - datetime.datetime.min).total_seconds())
    count = 0
    while count < int(sys.argv[2]):
        time = datetime.datetime.min + datetime.timedelta(seconds=random.randrange(seconds_of_all))
        days = random.randrange(-10 ** random.randint(1, 6), 10 ** random.randint(1, 6))
        try:
            after = shifted(time, days)
        except (ValueError, OverflowError):
            continue  # Python has no such date
        since_1970 = (time - EPOCH) // datetime.timedelta(seconds=1)
        print(*fields(time), time.weekday(), time.timetuple().tm_yday, since_1970, days, *fields(after))
        count += 1


main()

#!/usr/bin/python3
"""What a publisher's server carries when N agents fetch the update document at logon.

Usage: publisher_load.py [--agents N] [--size-kb KB] [--change-rate P]
                         [--compressed-ratio R] [--chart FILE]

Every installed agent asks for the document once a day, at the user's first
logon. The model spreads those logons over the day and prints, with and
without conditional requests and compression, the peak requests per second
and the peak and daily bandwidth; with --chart it draws the morning's
requests and bandwidth per minute (Debian's python3-matplotlib).

Logons: the customers are office workers in one time zone (the publisher's
products are desktop programs used at work). 90 % log on in the morning rush,
a normal distribution centred on 08:45 with a standard deviation of 35
minutes (most people start between 8 and 9:30); the other 10 % are spread
evenly over 06:00-20:00 (late starts, part-timers, laptops opened at home).
This is a pessimistic peak for a single-time-zone customer base; several time
zones only flatten it.

Bytes per reply (headers included) are what lighttpd's access log counted
for examples/lighttpd.conf under Wine on loopback (bench/wine_bytes.sh): a
"304 Not Modified" is 261 bytes, a 200's headers about 300, and gzip brings
the benchmark's 100 KB document to 27 % of its size (a document of real
items, with its repeated keys, compresses better: the default is cautious).
The change rate is the share of days on which the document changed since the
day before; on such a day every agent fetches it once, compressed.
"""
import argparse
import math

HEADER_BYTES = 300  # a 200's status line and headers
NOT_MODIFIED_BYTES = 261  # a whole 304 answer


def logons_per_minute(agents):
    """Expected logons in each minute of the day (1440 values)."""
    rush, rest = 0.9 * agents, 0.1 * agents
    centre, spread = 8 * 60 + 45, 35
    first, last = 6 * 60, 20 * 60
    minutes = []
    for m in range(24 * 60):
        cdf = lambda x: 0.5 * (1 + math.erf((x - centre) / (spread * math.sqrt(2))))
        share = rush * (cdf(m + 1) - cdf(m))
        if first <= m < last:
            share += rest / (last - first)
        minutes.append(share)
    return minutes


def model(agents, size_kb, change_rate, ratio):
    size = size_kb * 1000
    full = size + HEADER_BYTES  # older agents: the whole document, every day
    compressed = size * ratio + HEADER_BYTES
    per_minute = logons_per_minute(agents)
    scenarios = {
        "unconditional, plain": {"changed": full, "unchanged": full},
        "conditional + gzip": {"changed": compressed, "unchanged": NOT_MODIFIED_BYTES},
    }
    rows = []
    for name, bytes_for in scenarios.items():
        daily = agents * (change_rate * bytes_for["changed"] + (1 - change_rate) * bytes_for["unchanged"])
        rows.append({
            "name": name,
            "peak_rps": max(per_minute) / 60,
            "peak_mbit_changed": max(per_minute) * bytes_for["changed"] * 8 / 60 / 1e6,
            "peak_mbit_unchanged": max(per_minute) * bytes_for["unchanged"] * 8 / 60 / 1e6,
            "daily_gb": daily / 1e9,
            "bytes_for": bytes_for,
        })
    return per_minute, rows


def print_table(args, rows):
    print(f"{args.agents:,} agents, {args.size_kb:g} KB document, changed on "
          f"{args.change_rate:.0%} of days, gzip to {args.compressed_ratio:.0%}")
    print("| | peak requests/s | peak Mbit/s, document changed | peak Mbit/s, unchanged | GB per day (average) |")
    print("|---|---:|---:|---:|---:|")
    for r in rows:
        print(f"| {r['name']} | {r['peak_rps']:,.0f} | {r['peak_mbit_changed']:,.1f} | "
              f"{r['peak_mbit_unchanged']:,.2f} | {r['daily_gb']:,.1f} |")


def draw(path, per_minute, rows):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.pyplot as plt
    start, end = 6 * 60, 12 * 60
    hours = [m / 60 for m in range(start, end)]
    fig, (top, bottom) = plt.subplots(2, 1, figsize=(8, 6.5), sharex=True)
    top.plot(hours, [per_minute[m] for m in range(start, end)], color="tab:blue")
    top.set_ylabel("requests per minute")
    top.set_title("A morning of daily document fetches (same with and without)")
    styles = {"unconditional, plain": "tab:red", "conditional + gzip": "tab:green"}
    for r in rows:
        for day, dash in (("changed", "-"), ("unchanged", ":")):
            mbit = [per_minute[m] * r["bytes_for"][day] * 8 / 60 / 1e6 for m in range(start, end)]
            if r["name"].startswith("unconditional") and day == "unchanged":
                continue  # the same as on a day with a change
            label = r["name"] + ("" if r["name"].startswith("unconditional") else f", document {day}")
            bottom.plot(hours, mbit, dash, color=styles[r["name"]], label=label)
    bottom.set_yscale("log")
    bottom.set_ylim(top=bottom.get_ylim()[1] * 40)  # room for the legend
    bottom.set_ylabel("Mbit/s (log scale)")
    bottom.set_xlabel("time of day (hours)")
    bottom.legend(loc="upper right", fontsize="small")
    for axis in (top, bottom):
        axis.grid(True, alpha=0.3)
    fig.tight_layout()
    fig.savefig(path, dpi=80)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--agents", type=int, default=1_000_000)
    parser.add_argument("--size-kb", type=float, default=100)
    parser.add_argument("--change-rate", type=float, default=0.2,
                        help="share of days on which the document changed (default 0.2)")
    parser.add_argument("--compressed-ratio", type=float, default=0.27,
                        help="compressed size over plain size (default: the measured 0.27)")
    parser.add_argument("--chart", help="write the morning's chart to this PNG file")
    args = parser.parse_args()
    per_minute, rows = model(args.agents, args.size_kb, args.change_rate, args.compressed_ratio)
    print_table(args, rows)
    if args.chart:
        draw(args.chart, per_minute, rows)
        print(f"chart: {args.chart}")


if __name__ == "__main__":
    main()

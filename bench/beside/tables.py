# SPDX-License-Identifier: GPL-3.0-or-later
"""The figures as Markdown: ours first, then the others, then ours as a share of mpv's."""

from .hearing import least_silence
from .players import OURS


def _table(header, rows):
    lines = ["| " + " | ".join(header) + " |", "|" + "---|" * len(header)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines) + "\n"


def _ratio(ours, theirs):
    return f"{ours / theirs:.2f}" if theirs else "-"


def starts(figures):
    names = list(next(iter(figures.values())))
    rows = [[what] + [f"{values[name]:.2f} s" for name in names] + [_ratio(values[OURS], values["mpv"])]
            for what, values in figures.items()]
    return _table(["request to first sound", *names, "ratio to mpv"], rows)


def _heard(report):
    if report["firstSound"] is None:
        return "never"
    text = f"{report['longestSilence']:.2f} s"
    for word, key in (("twice", "repeated"), ("lost", "lost")):
        if report[key] > 0.05:
            text += f", {report[key]:.1f} s {word}"
    return text


def faults(figures):
    names = list(dict.fromkeys(name for _, name in figures))
    rows = [[case] + [_heard(figures[case, name]) for name in names]
            + [_ratio(figures[case, OURS]["longestSilence"], figures[case, "mpv"]["longestSilence"])]
            for case in dict.fromkeys(case for case, _ in figures)]
    return _table(["longest silence", *names, "ratio to mpv"], rows)


def absences(world, figures):
    names = list(dict.fromkeys(name for _, name in figures))
    rows = []
    for gone, how in dict.fromkeys(case for case, _ in figures):
        least = least_silence(world, gone)
        silences = [figures[(gone, how), name]["longestSilence"] for name in names]
        cells = [f"{silence:.1f} s ({silence - least:+.1f})" for silence in silences]
        rows.append([f"gone {gone} s, {how}", f"{least:.1f} s", *cells, _ratio(silences[0], silences[names.index("mpv")])])
    return _table(["silence (above the least possible)", "least", *names, "ratio to mpv"], rows)


def usage(title, costs, memories):
    cpu, switches = costs["mpv"]
    proportional, private = memories["mpv"]
    rows = [[name, f"{costs[name][0]:.3f} s", _ratio(costs[name][0], cpu), f"{costs[name][1]:.0f}",
             _ratio(costs[name][1], switches), f"{memories[name][0]:.1f} MiB", _ratio(memories[name][0], proportional),
             f"{memories[name][1]:.1f} MiB", _ratio(memories[name][1], private)] for name in costs]
    return _table([title, "CPU a minute", "to mpv", "wake-ups a minute", "to mpv", "memory (PSS)", "to mpv",
                   "private memory", "to mpv"], rows)


def connects(figures):
    first, last = figures["after50"], figures["afterAll"]
    rows = [[what, f"{first[key] / scale:.{places}f}", f"{last[key] / scale:.{places}f}",
             f"{(last[key] - first[key]) / scale:+.{places}f}"]
            for what, key, scale, places in (("descriptors", "descriptors", 1, 0), ("threads", "threads", 1, 0),
                                             ("memory (PSS), MiB", "memory", 1024, 1))]
    return _table([f"{figures['connects']} connects, {figures['heard']} heard", "after the 50th", "after the last",
                   "difference"], rows)

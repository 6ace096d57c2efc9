"""The results as Markdown tables."""

COMPARED = ("plain scan", "wc -l", "true", "plain C++", "sort + mawk", "sqlite3")


def comparison(results):
    """One row per work: ptick's figures, then the times of the others as multiples of ptick's."""
    lines = ["| work | ptick | " + " | ".join(COMPARED) + " |",
             "|---|---|" + "---|" * len(COMPARED)]
    for title, figures in results.items():
        own = figures["ptick"]
        cells = [title, f"{_seconds(own.seconds)}, {_megabytes(own)}"]
        for name in COMPARED:
            other = figures.get(name)
            cells.append(f"{_ratio(other.seconds / own.seconds)}, {_megabytes(other)}"
                         if other else "")
        lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(lines)


def threads(results):
    """One row per work: one thread, and all of them as a multiple of it."""
    lines = ["| work | one thread | all threads | time | memory |", "|---|---|---|---|---|"]
    for title, (one, every) in results.items():
        lines.append(f"| {title} | {_seconds(one.seconds)}, {_megabytes(one)} "
                     f"| {_seconds(every.seconds)}, {_megabytes(every)} "
                     f"| {_ratio(every.seconds / one.seconds)} "
                     f"| {_ratio(every.peak_kb / one.peak_kb)} |")
    return "\n".join(lines)


def line_growth(results, sizes):
    """One row per work: how the time per line changes from size to size."""
    lines = ["| time per line | " + " | ".join(f"{size:,}" for size in sizes) + " |",
             "|---|" + "---|" * len(sizes)]
    for work, own in results.items():
        cells = [f"{figures.seconds / size * 1e9:.0f} ns" for figures, size in zip(own, sizes)]
        lines.append("| " + " | ".join([work, *cells]) + " |")
    return "\n".join(lines)


def growth(results, sizes):
    """One row per work: the figures at both sizes, and how the time per line changes between."""
    small, large = sizes
    lines = [f"| work | {small:,} lines | {large:,} lines | time per line changes by |",
             "|---|---|---|---|"]
    for title, (few, many) in results.items():
        change = many.seconds / large / (few.seconds / small)
        lines.append(f"| {title} | {_seconds(few.seconds)}, {_megabytes(few)} "
                     f"| {_seconds(many.seconds)}, {_megabytes(many)} | {_ratio(change)} |")
    return "\n".join(lines)


def _seconds(seconds):
    return f"{seconds * 1000:.2f} ms" if seconds < 0.01 else f"{seconds:.3f} s"


def _ratio(ratio):
    return f"× {ratio:.2f}" if ratio < 10 else f"× {ratio:.0f}"


def _megabytes(figures):
    return f"{figures.peak_kb / 1000:.1f} MB" if figures.peak_kb < 10_000 else (
        f"{figures.peak_kb / 1000:.0f} MB")

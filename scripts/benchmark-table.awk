# Makes one table of Google Benchmark's JSON files, of the counters that bench/support/InTurns.h leaves: medians of the
# subject and of its baseline, in seconds or in bytes. Ends with 1 where there is nothing to show.

# "load sites/100000/iterations:9/manual_time" is: load sites 100,000
function title(name,    argument)
{
    sub(/\/(iterations|manual_time).*/, "", name)
    if (match(name, /\/[0-9]+$/)) {
        argument = substr(name, RSTART + 1)
        sub(/\/[0-9]+$/, "", name)
        if (length(argument) > 3)
            argument = substr(argument, 1, length(argument) - 3) "," substr(argument, length(argument) - 2)
        name = name " " argument
    }
    return name
}

# A figure with three digits and its unit.
function show(value, bytes,    i, count, units, step)
{
    count = split(bytes ? "B KiB MiB" : "ns us ms s", units, " ")
    step = bytes ? 1024 : 1000
    value = bytes ? value : value * 1e9
    for (i = 1; i < count && value >= step; ++i)
        value /= step
    return sprintf(value >= 100 ? "%.0f %s" : value >= 10 ? "%.1f %s" : "%.2f %s", value, units[i])
}

function row(what, measured, p99, baseline, ratio, wanted, remark)
{
    line = sprintf("%-52s %10s %10s %10s %7s  %-15s %s", what, measured, p99, baseline, ratio, wanted, remark)
    sub(/ +$/, "", line)
    print line
}

# Whether what is asked for holds; the text of it, with a remark where it does not.
function held_to(text, holds)
{
    return holds ? text : text " MISSED"
}

function finish(    bytes, measured, ratio, wanted)
{
    if (figures["error_message"] != "")
        row(figures["name"], "failed: " figures["error_message"])
    if (!("seconds" in figures) && !("bytes" in figures)) {
        shown += figures["error_message"] != ""
        return
    }
    bytes = "bytes" in figures
    measured = bytes ? figures["bytes"] : figures["seconds"]
    ratio = "baseline" in figures && figures["baseline"] > 0 ? measured / figures["baseline"] : 0
    if (figures["wanted_ratio"] > 0)
        wanted = held_to(sprintf("<= %.1fx", figures["wanted_ratio"]), ratio <= figures["wanted_ratio"])
    if (figures["wanted"] > 0)
        wanted = held_to("< " show(figures["wanted"], bytes), measured < figures["wanted"])
    if (figures["wanted_p99"] > 0)
        wanted = held_to("p99 < " show(figures["wanted_p99"], bytes), figures["p99"] < figures["wanted_p99"])
    if (shown++ == 0)
        row("what", "median", "p99", "baseline", "ratio", "wanted", "the baseline is")
    row(figures["name"], show(measured, bytes), "p99" in figures ? show(figures["p99"], bytes) : "",
        "baseline" in figures ? show(figures["baseline"], bytes) : "", ratio > 0 ? sprintf("%.2fx", ratio) : "", wanted,
        figures["label"])
}

/^ *"[^"]*": / {
    key = $0
    sub(/^ *"/, "", key)
    sub(/".*/, "", key)
    value = $0
    sub(/^ *"[^"]*": "?/, "", value)
    sub(/"?,?$/, "", value)
    if (key == "name")
        value = title(value)
    figures[key] = value ~ /^[-+.e0-9]+$/ ? value + 0 : value
}

/^ *},?$/ {
    finish()
    delete figures
}

END { exit shown == 0 }

# Turns CHANGELOG.md into a changelog as Debian's policy wants it: one entry for each
# section "## VERSION - DATE", one paragraph for each item. WHO is its author; the day
# of the week comes from the date itself.

function week_day(year, month, day,    shift) {
    if (month < 3) {
        month += 12
        year--
    }
    shift = (day + int(13 * (month + 1) / 5) + year + int(year / 4) - int(year / 100) + int(year / 400)) % 7
    return substr("SatSunMonTueWedThuFri", 3 * shift + 1, 3)
}

function flush_item(    words, count, n, line) {
    count = split(item, words, " ")
    line = "  *"
    for (n = 1; n <= count; n++) {
        if (length(line) + 1 + length(words[n]) > 78) {
            print line
            line = "   "
        }
        line = line " " words[n]
    }
    if (count) {
        print line
    }
    item = ""
}

function end_entry(    date) {
    flush_item()
    if (version != "") {
        split(day, date, "-")
        printf "\n -- %s  %s, %s %s %s 12:00:00 +0000\n", WHO, week_day(date[1] + 0, date[2] + 0, date[3] + 0),
            date[3], substr("JanFebMarAprMayJunJulAugSepOctNovDec", 3 * date[2] - 2, 3), date[1]
    }
}

/^## [0-9]/ {
    again = version != ""
    end_entry()
    version = $2
    day = $4
    printf "%starnwick (%s) stable; urgency=medium\n\n", again ? "\n" : "", version
    next
}
version == "" { next }
/^### / { flush_item(); kind = $2; next }
/^- / { flush_item(); item = kind ": " substr($0, 3); next }
/^  / { item = item " " $0 }
END { end_entry() }

#!/usr/bin/env bash
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/tools/setup.sh"

usage() {
    cat <<'TEXT'
Usage: ./bench.sh [--quick] [NAME...]

Installs what is missing, builds Stemhaven without sanitizers, measures it and prints one table: our figure, that of a
reference where there is one, their ratio, and the target. Each figure is the median of several runs, in which ours and
the reference take turns. What is missed is marked; the exit status says only whether everything could be measured.

  NAME     plist, walk, scan, record, listing, table, browse, events, drop or program; all of them by default.
  --quick  one run of each.
  --help   this text.

The libraries and catalogues are kept in build/bench-data; delete that folder to have them made anew.
TEXT
}

names=(plist walk scan record listing table browse events drop program)
chosen=()
rounds=5
while (($#)); do
    case $1 in
    --quick) rounds=1 ;;
    --help | -h) usage && exit ;;
    *)
        [[ " ${names[*]} " == *" $1 "* ]] || { usage >&2 && exit 2; }
        chosen+=("$1")
        ;;
    esac
    shift
done
((${#chosen[@]})) || chosen=("${names[@]}")

data=$stemhaven_root/build/bench-data
bin=$stemhaven_root/build/bench/bin
log=$data/log.txt
failed=no

# --- What is measured ---------------------------------------------------------------------------------------------------

# library NUMBER: prints the folder of a library of that many bundles.
library() {
    local folder=$data/library-$1
    if [[ ! -d $folder ]]; then
        say "Making a library of $1 projects"
        rm -rf "$folder.part"
        "$bin/stemhaven-demo-library" --projects "$1" --plain --entries-per-bundle 25 "$folder.part" >>"$log" 2>&1
        mv "$folder.part" "$folder"
        # What was written this shortly before the program's start counts as written after it.
        sleep 3
    fi
    remove_notes "$folder"
    printf '%s\n' "$folder"
}

# The program leaves a note in each bundle that it has recorded.
remove_notes() { find "$1" -name 'Stemhaven.plist*' -delete; }

# use_profile: a private and empty profile, for what is run by "${private[@]}".
use_profile() {
    profile=$data/profile
    rm -rf "$profile"
    mkdir -p "$profile/home"
    private=(env HOME="$profile/home" XDG_DATA_HOME="$profile/data" XDG_CONFIG_HOME="$profile/config"
        XDG_CACHE_HOME="$profile/cache" QT_QPA_PLATFORM=offscreen)
}

# use_catalogue NUMBER: a private profile with that many projects in its catalogue.
use_catalogue() {
    local kept=$data/catalogue-$1
    use_profile
    if [[ $kept -nt $bin/many_projects ]]; then
        cp -r "$kept/." "$profile"
        return
    fi
    say "Making a catalogue of $1 projects"
    "${private[@]}" "$bin/many_projects" "$1" "$data/no-library" >>"$log" 2>&1
    rm -rf "$kept"
    cp -r "$profile" "$kept"
}

# --- Measuring ----------------------------------------------------------------------------------------------------------

# sample COMMAND...: keeps the figures among what the command prints. Each is a line: its name, the value, s, B or 1.
sample() {
    local status=0
    "$@" >"$data/output.txt" 2>>"$log" || status=$?
    grep -E '^[a-z0-9-]+ [0-9.e+-]+ (s|B|1)$' "$data/output.txt" >>"$data/samples.txt" || status=1
    ((status == 0)) || complain "$status"
}

complain() {
    say "A run for $name failed ($1); see $log"
    failed=yes
}

# timed NAME COMMAND...: the time that the whole process takes.
timed() {
    local begin end
    begin=${EPOCHREALTIME/[.,]/}
    "${@:2}" >>"$log" 2>&1 || { complain $? && return; }
    end=${EPOCHREALTIME/[.,]/}
    printf '%s %de-6 s\n' "$1" $((end - begin)) >>"$data/samples.txt"
}

times() {
    local round
    for ((round = 0; round < $1; ++round)); do "${@:2}"; done
}

bench_plist() {
    "$bin/plist_bench" "$data/MetaData.plist"
    times "$rounds" plist_round
}

plist_round() {
    sample plist_cases
    sample python3 "$stemhaven_root/bench/plistlib_bench.py" "$data/MetaData.plist"
}

plist_cases() {
    "$bin/plist_bench" --benchmark_format=csv --benchmark_min_time=0.2 |
        awk -F, '$1 ~ /code/ { gsub("\"", ""); sub("/", "-"); print tolower($1), $3 "e-9", "s" }'
}

bench_walk() {
    local number folder
    for number in 1000 10000; do
        folder=$(library "$number")
        times $((4 * rounds)) walk_round "$number" "$folder"
    done
}

walk_round() {
    timed "walk-$1" "$bin/walk_bench" "$2"
    timed "walk-$1-find" find "$2" -name '*.logicx' -prune
}

bench_scan() {
    local number folder
    for number in 1000 10000; do
        folder=$(library "$number")
        times "$rounds" scan_round "$number" "$folder"
    done
}

scan_round() {
    local bench
    for bench in floor scan; do
        use_profile
        settle "$2"
        sample "${private[@]}" "$bin/${bench}_bench" "$2" "$1"
        remove_notes "$2"
    done
}

# settle FOLDER: what was written is on the disk and counts as old, and the lists of the bundles are in memory.
settle() {
    find "$1" -name '*.plist' -exec cat {} + >"$data/output.txt"
    sync
    sleep 3
}

bench_record() {
    local folder
    folder=$(library 1000)
    use_catalogue 10000
    sample "${private[@]}" "$bin/record_bench" "$folder"
    remove_notes "$folder"
}

bench_listing() {
    local number
    for number in 1000 10000 100000; do
        use_catalogue "$number"
        sample "${private[@]}" "$bin/listing_bench" "$number" "$rounds"
    done
}

bench_table() {
    local number
    for number in 10000 100000; do
        use_catalogue "$number"
        sample "${private[@]}" "$bin/table_bench" "$number" "$rounds"
    done
}

bench_browse() {
    use_catalogue 10000
    sample "${private[@]}" "$bin/browse_bench" 10000 "$rounds"
}

bench_events() {
    local folder
    folder=$(library 10000)
    allow_watches "$folder"
    use_profile
    say "Recording the 10000 projects"
    "${private[@]}" "$bin/scan_bench" "$folder" 10000 >>"$log" 2>&1 || { complain $? && return; }
    sample "${private[@]}" "$bin/follow_bench" replay "$folder" 0
    times "$rounds" events_round "$folder"
    run_settled idle_of following
    remove_notes "$folder"
}

events_round() {
    sample "$bin/watch_bench" "$1" 10000
    sample "${private[@]}" "$bin/follow_bench" storm "$1"
    sample "${private[@]}" "$bin/follow_bench" burst "$1" 1000
    sample "${private[@]}" "$bin/follow_bench" rescan "$1"
    timed rescan-find find "$1" -name '*.logicx' -prune
    sample "${private[@]}" "$bin/follow_bench" replay "$1" 10
}

bench_drop() {
    local folder=$data/library-500 library
    # From a run that was interrupted.
    [[ ! -d $folder/Dropped ]] || mv "$folder/Dropped" "$data/library-5000"
    folder=$(library 500)
    library=$(library 5000)
    use_profile
    "${private[@]}" "$bin/scan_bench" "$folder" 500 >>"$log" 2>&1 || { complain $? && return; }
    "${private[@]}" "$bin/follow_bench" replay "$folder" 0 >>"$log" 2>&1 || { complain $? && return; }
    rm -rf "$data/recorded"
    cp -r "$profile" "$data/recorded"
    times "$rounds" drop_round "$folder" "$library"
    remove_notes "$folder"
}

drop_round() {
    use_profile
    cp -r "$data/recorded/." "$profile"
    settle "$2"
    sample "${private[@]}" "$bin/follow_bench" drop "$1" "$2"
    [[ ! -d $1/Dropped ]] || mv "$1/Dropped" "$2"
    remove_notes "$2"
}

# allow_watches FOLDER: lets inotifywait watch every folder below it, until this script ends.
allow_watches() {
    local setting=/proc/sys/fs/inotify/max_user_watches before needed
    before=$(<"$setting")
    needed=$(($(find "$1" -type d | wc -l) * 2))
    ((before < needed)) || return 0
    if [[ ! -w $setting ]]; then
        say "The limit of watches is $before, and inotifywait may need more."
        return
    fi
    say "Raising the limit of watches from $before to $needed for this run"
    # shellcheck disable=SC2064 # what they are now
    trap "echo $before >$setting" EXIT
    echo "$needed" >"$setting"
}

bench_program() {
    times "$rounds" start_round
    use_catalogue 100000
    run_settled memory_of 100000
    use_catalogue 10000
    run_settled memory_and_idling
}

start_round() {
    use_catalogue 10000
    timed start "${private[@]}" "$bin/stemhaven" --screenshot "$data/window.png"
}

# run_settled COMMAND...: runs the program, the command once the program has come to rest, and ends the program.
run_settled() {
    local pid before=-1 now=0 seconds
    "${private[@]}" "$bin/stemhaven" >>"$log" 2>&1 &
    pid=$!
    for ((seconds = 0; seconds < 60 && now != before; ++seconds)); do
        before=$now
        sleep 1
        now=$(ticks "$pid")
    done
    "$@" "$pid"
    kill "$pid"
    wait "$pid" || complain $?
}

memory_of() { awk -v name="memory-$1" '/^VmRSS/ { print name, $2 * 1024, "B" }' "/proc/$2/status" >>"$data/samples.txt"; }

memory_and_idling() {
    memory_of 10000 "$1"
    idle_of idle "$1"
}

# idle_of NAME PID
idle_of() {
    local ticks_before switches_before
    ticks_before=$(ticks "$2")
    switches_before=$(switches "$2")
    sleep 5
    printf '%s %d 1\n' "$1-ticks" $(($(ticks "$2") - ticks_before)) \
        "$1-switches" $(($(switches "$2") - switches_before)) >>"$data/samples.txt"
}

ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }

switches() { cat "/proc/$1"/task/*/status | awk '/ctxt_switches/ { sum += $2 } END { print sum }'; }

# --- The table ----------------------------------------------------------------------------------------------------------

# Who, what, our figure, the reference's and its name, and what is at most allowed: of the ratio, or of our figure.
rows() {
    cat <<'ROWS'
plist|Decode a MetaData.plist|decode-stemhaven|decode-libplist|libplist|ratio|0.7
plist||decode-stemhaven|decode-plistlib|plistlib||
plist|Encode it|encode-stemhaven|encode-libplist|libplist||
plist||encode-stemhaven|encode-plistlib|plistlib||
walk|Walk over 1,000 bundles, whole process|walk-1000|walk-1000-find|find|ratio|1.5
walk|Walk over 10,000|walk-10000|walk-10000-find|find|ratio|1.5
scan|First scan of 1,000 bundles|scan-1000|scan-1000-floor|floor||
scan|First scan of 10,000|scan-10000|scan-10000-floor|floor|ratio|1.5
scan|  on a machine like ours|scan-10000|||figure|20
scan|  for each bundle|scan-10000-bundle|scan-1000-bundle|of 1,000|ratio|1.2
scan|  longest stall of the window|scan-10000-stall|||figure|0.05
record|Insert a record|record|||figure|
listing|Fill the table's model, 1,000 rows|listing-1000|listing-1000-shell|sqlite3||
listing|  10,000 rows|listing-10000|listing-10000-shell|sqlite3||
listing|  100,000 rows|listing-100000|listing-100000-shell|sqlite3||
table|Slowest keystroke to repaint, 10,000 rows|keystroke-10000|||figure|0.06
table|  100,000 rows|keystroke-100000|||figure|0.6
table|Slowest sort to repaint, 10,000 rows|sort-10000|||figure|0.1
table|  100,000 rows|sort-100000|||figure|
table|Longest stall in these, 100,000 rows|table-stall-100000|||figure|0.1
browse|Selection to filled details, 10,000 rows|select-10000|||figure|0.05
browse|  behind a held Down key|hold-10000|||figure|0.05
browse|Click in the sidebar to filtered table|filter-10000|||figure|0.08
browse|Edit to record|edit-10000|||figure|0.1
browse|  to table|edit-shown-10000|||figure|
browse|Longest stall in these|browse-stall-10000|||figure|0.05
browse|Edit of 1,000 selected rows to repaint|edit-many-shown-10000|||figure|
browse|  longest stall|edit-many-stall-10000|||figure|0.05
events|Watch 10,000 bundles|watch|watch-inotifywait|inotifywait|figure|2
events|  watches for each|watch-each|||figure|6
events|Save a bundle 2,000 times in 10 s: updates|storm-updates|||figure|5
events|  longest stall of the window|storm-stall|||figure|0.05
events|Save 1,000 bundles at once, until recorded|burst|||figure|10
events|  longest stall of the window|burst-stall|||figure|0.05
events|Search 10,000 bundles, none of them new|rescan|rescan-find|find|figure|1
events|  longest stall of the window|rescan-stall|||figure|0.05
events|Start, none of 10,000 saved since first scan|replay-0|||figure|2
events|  updates|replay-0-updates|||figure|0
events|Start, 10 of 10,000 saved while not running|replay-10|||figure|2
events|  updates|replay-10-updates|||figure|10
events|  longest stall of the window|replay-10-stall|||figure|
events|Idle for 5 s, watching: processor ticks|following-ticks|||figure|0
events|  context switches|following-switches|||figure|0
drop|Save 0.5 s behind a drop of 5,000 bundles|drop-save|||figure|5
drop|  since its batch was due|drop-save-batch|||figure|2
drop|  longest stall of the window|drop-stall|||figure|0.05
drop|Selection to filled details meanwhile|drop-select|||figure|0.05
drop|  the slowest|drop-select-slowest|||figure|
program|Start to picture, 10,000 rows|start|||figure|0.8
program|Resident memory, 10,000 rows|memory-10000|||figure|157286400
program|  100,000 rows|memory-100000|||figure|
program|Idle for 5 s: processor ticks|idle-ticks|||figure|0
program|  context switches|idle-switches|||figure|0
ROWS
}

print_table() {
    sort -k1,1 -k2,2g "$data/samples.txt" | awk -v chosen=" ${chosen[*]} " '
        function shown(value, unit) {
            if (unit == "s") return value < 1e-3 ? sprintf("%.3g us", value * 1e6) : \
                                    value < 1 ? sprintf("%.3g ms", value * 1e3) : sprintf("%.3g s", value)
            if (unit == "B") return sprintf("%.0f MiB", value / 1048576)
            return value == int(value) ? sprintf("%d", value) : sprintf("%.1f", value)
        }
        function line(what, ours, reference, ratio, target, mark) {
            printf "%-44s %10s %19s %7s %14s  %s\n", what, ours, reference, ratio, target, mark
        }
        FNR == NR { count[$1]++; figure[$1, count[$1]] = $2; unit[$1] = $3; next }
        FNR == 1 {
            # An even number of samples has no middle one; the slower of the two it is.
            for (name in count) median[name] = figure[name, int(count[name] / 2) + 1]
            line("", "Stemhaven", "reference", "ratio", "target", "")
        }
        {
            split($0, row, "|")
            if (!index(chosen, " " row[1] " ")) next
            ours = row[3]; reference = row[4]; limit = row[7]
            ratio = (ours in median) && (reference in median) ? median[ours] / median[reference] : ""
            judged = row[6] == "ratio" ? ratio : (ours in median) ? median[ours] : ""
            target = judged == "" || limit == "" ? "" : "<= " (row[6] == "ratio" ? "ratio " limit : shown(limit, unit[ours]))
            line(row[2], ours in median ? shown(median[ours], unit[ours]) : "-",
                reference in median ? row[5] " " shown(median[reference], unit[reference]) : "",
                ratio == "" ? "" : sprintf("%.2f", ratio), target,
                judged == "" || limit == "" ? "" : judged <= limit + 0 ? "ok" : "MISSED")
        }' - <(rows)
}

install_packages_for build bench tests || fail "packages are missing"
fetch_icon_font
build bench
mkdir -p "$data"
read -r load _ </proc/loadavg
((${load%.*} < $(nproc))) || say "The machine is busy (load $load), so the figures will be too large."
: >"$data/samples.txt"
: >"$log"
for name in "${chosen[@]}"; do
    say "Measuring $name"
    "bench_$name"
done
print_table
[[ $failed == no ]]

# shellcheck shell=bash
# Reads what a program says of itself with --help, for its man page and its completion. Sourced.

# help_of PROGRAM [COMMAND...]
help_of() { "$@" --help </dev/null; }

# section NAME: the entries of a section of the help on standard input, a line each: entry, tab, text. The text begins in
# column 31; below an entry that reaches so far it has a line of its own.
section() {
    awk -v name="$1:" '
        function finish() { if (entry != "") print entry "\t" text; entry = text = "" }
        $0 == name { inside = 1; next }
        inside && /^$/ { exit }
        !inside { next }
        substr($0, 1, 30) ~ /^ *$/ { entry = line; text = substr($0, 31); line = ""; finish(); next }
        { split_line(); line = substr($0, 3) }
        function split_line() {
            if (line == "") return
            entry = substr(line, 1, 28)
            sub(/ +$/, "", entry)
            text = substr(line, 29)
            finish()
        }
        END { split_line() }'
}

# commands PROGRAM [COMMAND...]: the words of each command below, at any depth.
commands() {
    local command
    while IFS=$'\t' read -r command _; do
        echo "${*:2}${2:+ }$command"
        commands "$@" "$command"
    done < <(help_of "$@" | section Subcommands)
}

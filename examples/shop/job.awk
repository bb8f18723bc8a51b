# What the generators share. A line of a job is started, given its arguments and finished. The texts hold no "\".

function start(method) { line = "{\"" method "\":{"; comma = "" }
function argument(name, json) { line = line comma "\"" name "\":" json; comma = "," }
function text(name, value) { gsub(/"/, "\\\"", value); argument(name, "\"" value "\"") }
function number(name, value) { argument(name, value "") }
function money(name, value) { argument(name, sprintf("%.2f", value)) }
function finish() { print line "}}" }

# A parameter list: one element whose attributes stand in apostrophes.
function attribute(name, value) {
    gsub(/&/, "\\&amp;", value)
    gsub(/</, "\\&lt;", value)
    gsub(/'/, "\\&#39;", value)
    list = list " " name "='" value "'"
}

# The attributes of a list that have no value of their own: every one must be there.
function attributes(names, usual, given,   parts, count, i) {
    count = split(names, parts, " ")
    for (i = 1; i <= count; i++) attribute(parts[i], parts[i] in given ? given[parts[i]] : usual)
}

# A day of spring 2024, counted from 1 March.
function day(count) {
    if (count < 31) return sprintf("2024-03-%02d", count + 1)
    return count < 61 ? sprintf("2024-04-%02d", count - 30) : sprintf("2024-05-%02d", count - 60)
}

/^#/ { next }

# Sets the lines that the programs print, cells separated by tabs, as one table: Markdown, with the
# columns aligned so that it reads as well in a terminal.
BEGIN {
    FS = "\t"
    columns = split("work,size,ours,MB/s,growth,peer,time,MB/s,growth,ratio,to reach,reached",
                    title, ",")
    # Numbers stand at the right of their column.
    split("0,0,1,1,1,0,1,1,1,1,0,0", right, ",")
    for (c = 1; c <= columns; c++)
        width[c] = length(title[c])
}
{
    sub(/\r$/, "")
}
$1 == "why" {
    reasons = reasons "\n- " $2
    next
}
{
    rows++
    for (c = 1; c <= columns; c++) {
        cell[rows, c] = $c
        if (length($c) > width[c])
            width[c] = length($c)
    }
}
END {
    line = "|"
    rule = "|"
    for (c = 1; c <= columns; c++) {
        line = line sprintf(" %-" width[c] "s |", title[c])
        dashes = sprintf("%" width[c] "s", "")
        gsub(/ /, "-", dashes)
        rule = rule (right[c] ? " " dashes ":|" : " " dashes " |")
    }
    print line
    print rule
    for (r = 1; r <= rows; r++) {
        line = "|"
        for (c = 1; c <= columns; c++)
            line = line sprintf(" %" (right[c] ? "" : "-") width[c] "s |", cell[r, c])
        print line
    }
    if (reasons != "")
        print reasons
}

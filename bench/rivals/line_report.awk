# Rows of the per-line report from ordered trace lines, the "ticks" record before them; with
# per_program set, a subtotal after each program.
BEGIN { FS = "\t" }

function subtotal() {
  printf "%28s-------- ------\n%28s%-8.0f %-6s\n\n", "", "", ticks_sum, share_sum / 100
  ticks_sum = share_sum = 0
}

$1 == "PROFILE:ticks" { total = $2; next }

per_program && rows && $2 != name { subtotal() }

{
  if ($4 != ticks) {
    ticks = $4
    share = total ? int(ticks * 10000 / total) : 0
    columns = sprintf("%-8s %-6s", ticks, share / 100)
  }
  printf "%-20s %-6s %s\n", $2 == name ? "" : $2, $3, columns
  name = $2
  ticks_sum += ticks
  share_sum += share
  ++rows
}

END { if (per_program && rows) subtotal() }

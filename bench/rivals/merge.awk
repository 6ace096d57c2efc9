# Trace lines of several profiles with the ticks of equal programs and lines added up, the last key
# to appear first, after a "ticks" record that sorts before them.
BEGIN { FS = OFS = "\t" }

$1 == "PROFILE:trace" {
  key = $2 "\t" $3
  if (!(key in ticks)) keys[++count] = key
  ticks[key] += $4
}

$1 == "PROFILE:ticks" { total += $2 }

END {
  print "PROFILE:ticks", total, "", "999999999999"
  for (i = count; i > 0; --i) print "PROFILE:trace", keys[i], ticks[keys[i]]
}

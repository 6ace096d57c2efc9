# How often each command was performed. With merged set, PERFORMs that differ in nothing but the
# command count as one, whose command is the sum of theirs.
merged && /^PROFILE:perform\t/ {
  at = index($0, "\tcmd\t")
  key = substr($0, 1, at)
  if (key in command) command[key] += substr($0, at + 5)
  else command[key] = substr($0, at + 5)
  next
}

/^PROFILE:perform\t/ { ++times[substr($0, index($0, "\tcmd\t") + 5)] }

END {
  for (key in command) ++times[command[key]]
  for (each in times) printf "%-10s %s\n", times[each], each
}

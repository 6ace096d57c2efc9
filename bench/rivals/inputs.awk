# The lines of a replay script, after its banner, with a typing delay for each input.
BEGIN { FS = "\t" }

$1 == "PROFILE:program" { program = $2; sub(/ -JP/, " -J", program) }
$1 == "PROFILE:hertz" { hertz = $2 }
$1 == "PROFILE:startclock" { last = $2 }

program && !begun {
  begun = 1
  printf "PROGRAM \"%s\" STDOUT \"-\" STDERR \"-\"\nPipeNumber = $PIPE\n", program
}

$1 == "PROFILE:input" {
  if (last && $4 > last) print "SLEEP " ($4 - last) / hertz
  last = $5
  keys = $3 + ($2 != 0)
  if (keys) print "TYPEDELAY " int(($5 - $4) * 10000 / hertz / keys) / 10000
  text = $6
  for (i = 7; i <= NF; ++i) text = text "\t" $i
  gsub(/[~"]/, "~&", text)
  gsub(/\t/, "~009", text)
  ending = " NOCR"
  if ($2 == 10 || $2 == 13) ending = ""
  else if ($2) text = text sprintf("~%03d", $2)
  print "INPUT \"" text "\"" ending
}

END { if (begun) print "WAIT PIPE PipeNumber" }

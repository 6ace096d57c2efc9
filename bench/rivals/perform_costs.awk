# A row for each PERFORM whose fields are in the usual order; width is that of the page.
BEGIN { FS = "\t" }

$1 == "PROFILE:hertz" { hertz = $2 }

$1 == "PROFILE:perform" {
  printf "%-7s %-4s %-7s %-13s %s\n", ($5 - $3) / hertz, toupper($17), $11,
    $13 / hertz "," $15 / hertz, substr($19, 1, width - 36)
}

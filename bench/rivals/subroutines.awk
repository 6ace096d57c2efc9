# A row for each subroutine call.
BEGIN { FS = "\t" }

$1 == "PROFILE:subroutine_call" {
  split($2, words, " ")
  printf "%-10s  %s\n", $3, words[2]
}

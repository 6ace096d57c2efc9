# Completion of ptick-diff for fish.

# Directories below the word at the cursor.
function __ptick_diff_directories
  __fish_complete_directories (commandline -ct)
end

complete -c ptick-diff -l by -x -a "line program command subroutine counter" -d "what the rows are of: line (ticks by program and line, the default), program (ticks), command, subroutine, counter"
complete -c ptick-diff -l sort -x -a "change relative old new name" -d "the order of the rows: change (the largest first, the default), relative (to the old value), old, new, name"
complete -c ptick-diff -l top -x -a "all" -d "show the first N rows, or all; by itself 30 on a terminal, else all"
complete -c ptick-diff -l all -d "show the rows within noise, too, each marked ~"
complete -c ptick-diff -l normalize -d "take the new side times what makes the totals equal"
complete -c ptick-diff -l old-source -x -a "(__ptick_diff_directories)" -d "look for the old sources in DIR, so that lines that moved are followed; several are asked in their order"
complete -c ptick-diff -l new-source -x -a "(__ptick_diff_directories)" -d "look for the new sources in DIR"
complete -c ptick-diff -l fail-slower -x -d "exit with status 1 when the total grew by more than PERCENT, and not by noise"
complete -c ptick-diff -l fail-slower-row -x -d "the same when any row grew by more than PERCENT of the old total"
complete -c ptick-diff -l json -d "write JSON with all rows, or as many as --top says"
complete -c ptick-diff -l csv -d "write the same as CSV"
complete -c ptick-diff -l vs -d "parts the OLD profiles from the NEW ones"
complete -c ptick-diff -s o -l output -r -F -d "write the result to FILE, whole or not at all; '-' is standard output"
complete -c ptick-diff -s q -l quiet -d "show no progress"
complete -c ptick-diff -l color -x -a "auto always never" -d "use colour: auto (on a terminal), always or never"
complete -c ptick-diff -s h -l help -d "show this help and end"
complete -c ptick-diff -s V -l version -d "show the version and end"

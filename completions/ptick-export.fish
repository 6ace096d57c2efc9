# Completion of ptick-export for fish.

complete -c ptick-export -s t -l to -x -a "json csv callgrind pprof speedscope trace folded" -d "the format, one of those below"
complete -c ptick-export -l table -x -a "lines programs commands subroutines objects inputs counters" -d "the table that csv holds; lines if not given"
complete -c ptick-export -s f -l source -x -a "(__fish_complete_directories)" -d "look for the sources of programs in the folder DIR; may be repeated, the first source found is taken"
complete -c ptick-export -s o -l output -r -F -d "write the result to FILE, whole or not at all; '-' is standard output"
complete -c ptick-export -s q -l quiet -d "show no progress"
complete -c ptick-export -l color -x -a "auto always never" -d "use colour: auto (on a terminal), always or never"
complete -c ptick-export -s h -l help -d "show this help and end"
complete -c ptick-export -s V -l version -d "show the version and end"

# Completion of ptick-annotate for fish.

complete -c ptick-annotate -s f -l source -x -a "(__fish_complete_directories (commandline -ct))" -d "look for the sources of programs in the folder DIR; may be repeated, the first source found is taken"
complete -c ptick-annotate -s c -l context -x -d "show N lines around each line with ticks; 3 is usual"
complete -c ptick-annotate -s a -l all -d "show all lines of each source"
complete -c ptick-annotate -s p -l program -x -d "show the program NAME only; may be repeated for several"
complete -c ptick-annotate -s o -l output -r -F -d "write the result to FILE, whole or not at all; '-' is standard output"
complete -c ptick-annotate -s q -l quiet -d "show no progress"
complete -c ptick-annotate -l color -x -a "auto always never" -d "use colour: auto (on a terminal), always or never"
complete -c ptick-annotate -s h -l help -d "show this help and end"
complete -c ptick-annotate -s V -l version -d "show the version and end"

# Completion of ptick-view for fish.

complete -c ptick-view -l baseline -r -F -d "show the change from PROFILE in every view; several are runs of the same program"
complete -c ptick-view -l open -d "open the page in a browser when it is written"
complete -c ptick-view -s f -l source -x -a "(__fish_complete_directories)" -d "look for the sources of programs in the folder DIR; may be repeated, the first source found is taken"
complete -c ptick-view -s o -l output -r -F -d "write the result to FILE, whole or not at all; '-' is standard output"
complete -c ptick-view -s q -l quiet -d "show no progress"
complete -c ptick-view -l color -x -a "auto always never" -d "use colour: auto (on a terminal), always or never"
complete -c ptick-view -s h -l help -d "show this help and end"
complete -c ptick-view -s V -l version -d "show the version and end"

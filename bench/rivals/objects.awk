# The name of each shared object that was used.
BEGIN { FS = "\t" }

$1 == "PROFILE:shared_object" && $3 != 0 && $2 != "main()" { print $2 }

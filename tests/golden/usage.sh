try() { loopwise "$@"; echo "-> $?" >&2; }
try
try --version
try weave
try survey
try survey --method knit trefoil.txt
try survey --method directions --structure trefoil.txt
try survey --count 5 trefoil.txt
try survey --method outside --seed 5 trefoil.txt
try survey --scale 2 trefoil.txt
try survey --method point --scale 1 trefoil.txt
try survey --json --csv trefoil.txt
try survey --view 3 trefoil.txt
try survey --threads 0 trefoil.txt
try survey none.txt
try survey --first 500 trefoil.txt
try survey --svg no/such/folder/picture.svg --method outside trefoil.txt
try fingerprint --full --step 3 trefoil.txt
try fingerprint --closures 401 trefoil.txt
try survey --help >/dev/full
try survey --method outside trefoil.txt >/dev/full
try survey --view 59 --svg picture.svg --method outside trefoil.txt >report
head -1 report
try survey --view 60 --svg picture.svg trefoil.txt
try fingerprint --step 0 trefoil.txt
try fingerprint --closures 0 trefoil.txt
try fingerprint --min-share 1.01 trefoil.txt

# Numbers that go around after 9999, that repeat, and that are not in order.
awk '{ print (NR > 60 ? NR - 61 : 9939 + NR), $2, $3, $4 }' trefoil.txt >around.txt
awk '{ print (NR > 60 ? NR - 60 : NR), $2, $3, $4 }' trefoil.txt >twice.txt
awk '{ print (NR > 100 ? NR - 80 : NR > 20 ? NR + 20 : NR), $2, $3, $4 }' trefoil.txt >mixed.txt
awk '{ print 200 - (NR > 40 ? NR + 5 : NR), $2, $3, $4 }' trefoil.txt >falling.txt
try() { echo "loopwise check $*"; loopwise check "$@" 2>&1 | head -1; }
try --first 9950 --last 9960 around.txt
try --first 9990 --last 9 around.txt
try --first 9950 around.txt
try --last 9950 around.txt
try --first 5000 around.txt
try --first 50 --last 9 twice.txt
try --first 10 --last 30 mixed.txt
try --first 10 --last 50 mixed.txt
try --first 50 --last 40 mixed.txt
try --first 190 --last 157 falling.txt
try --first 157 --last 140 falling.txt
try --first 156 --last 159 falling.txt
try --first 157 --last 158 falling.txt

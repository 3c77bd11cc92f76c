# Everything that a picture and a page hold, but for the scripts that every page has.
data_of() { # without the positions of beads, of which there is a sum
    grep '"columns":' "$1" >data
    cksum <data
    sed -E 's/,?\[-?[0-9.]+,-?[0-9.]+,-?[0-9.]+\]//g' data
}
loopwise fingerprint --closures 5 --step 30 --svg matrix.svg --html page.html trefoil.txt >/dev/null
cat matrix.svg
data_of page.html
# Two residues a dot.
awk '{ print } END { for (i = 1; i <= 300; ++i) print $1 + i, $2 + 3.8 * i, $3, $4 }' trefoil.txt >tailed.txt
loopwise fingerprint --closures 2 --step 60 --svg tailed.svg tailed.txt >/dev/null
cat tailed.svg
# More knots than the key has rows.
awk 'function step() { seed = (seed * 16807) % 2147483647; return 30 * seed / 2147483647 }
    BEGIN { seed = 1; for (i = 1; i <= 45; ++i) print i, step(), step(), step() }' >ball.txt
loopwise fingerprint --closures 1 --step 15 --svg ball.svg ball.txt >/dev/null
grep '<text.*font-size="1[46]"' ball.svg
loopwise survey --method direction --count 20 --seed 3 --html page.html trefoil.txt >/dev/null
data_of page.html
stat -c %a matrix.svg

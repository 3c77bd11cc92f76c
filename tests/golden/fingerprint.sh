loopwise fingerprint --closures 20 trefoil.txt
loopwise fingerprint --closures 20 --step 6 --csv --min-share 0.2 trefoil.txt
loopwise fingerprint --closures 10 --step 10 --json --threads 1 --matrix matrix.csv --svg matrix.svg --pymol knot.pml \
    --chimerax knot.cxc --html page.html trefoil.txt
ls
head -5 matrix.csv
grep -o '<text[^>]*>-3_1 core.*' matrix.svg
cat knot.pml knot.cxc
head -3 trefoil.txt >three.txt
head -1 trefoil.txt >one.txt
sed '40,60d' trefoil.txt >gap.txt
loopwise fingerprint three.txt one.txt none.txt gap.txt --closures 4 --step 20
echo "-> $?"
awk 'BEGIN { for (i = 1; i <= 500000; ++i) print i, 3.8 * i, i % 7, i % 5 }' >long.txt
loopwise fingerprint --full long.txt 2>&1 | sed 's/[0-9]* MB/... MB/'
awk 'function step() { seed = (seed * 16807) % 2147483647; return 7 * seed / 2147483647 - 3.5 }
    BEGIN { seed = 1; for (i = 1; i <= 1500; ++i) print i, x += step(), y += step(), z += step() }' >walk.txt
timeout --foreground --preserve-status -s INT 2 loopwise fingerprint --full --closures 400 --json --html never.html walk.txt >all 2>&1
echo "-> $?"
sed '/closing every subchain takes/d' all
ls never.html* 2>&1
# An interruption once the report is there, while the page is made.
loopwise fingerprint --closures 2 --html never.html walk.txt >report &
until grep -qs closed, report || ! kill -0 $!; do sleep 0.01; done
kill -INT $!
wait $!
echo "-> $?"
ls never.html* 2>&1

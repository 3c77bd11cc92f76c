# A survey of many files that is stopped goes on: the table of a part is there whole or not at all, and once.
part=$(dirname "$0")/../../examples/scaling/survey_part
table=$(dirname "$0")/../../examples/scaling/survey_table
mkdir lists parts
cp trefoil.txt 'a second.txt'
mkfifo late.txt
printf '%s\n' trefoil.txt none.txt >lists/0
printf '%s\n' 'a second.txt' late.txt >lists/1
"$part" lists/0 parts && timeout 1 "$part" lists/1 parts # which waits for the late one
echo "-> $?"
ls parts
"$table" lists parts
rm late.txt && cp trefoil.txt late.txt && touch -d 2001-01-01 parts/0.csv
for list in lists/*; do "$part" $list parts; done
"$table" lists parts | cut -d, -f1-14
cat parts/*.err
find parts ! -newermt 2002-01-01

# A program that alone is interrupted or killed has written only some rows.
mkdir stub stopped
for end in 'exit 130' 'kill -9 $$'; do
    printf '#!/bin/sh\necho row\n%s\n' "$end" >stub/loopwise
    chmod +x stub/loopwise
    PATH=$PWD/stub:$PATH "$part" lists/0 stopped
    echo "-> $?"
done
ls stopped

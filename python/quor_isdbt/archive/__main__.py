from quor_isdbt.archive.command import main

main()
